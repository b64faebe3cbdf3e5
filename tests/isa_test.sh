#!/bin/sh
# isa_test.sh LIBRARY: the library is built for every x86-64. Instructions beyond that may stand only in functions that name
# the kernel they belong to, so that no linker can ever put one in the place of its twin for older processors.
set -eu
objdump -d --no-show-raw-insn "$1" | awk '
    /^[0-9a-f]+ <.*>:$/ { name = $2 }
    $2 ~ /^(pdep|pext|lzcnt|bzhi|mulx|rorx|sarx|shlx|shrx|andn|bls|v[a-z])/ && $2 !~ /^ver[rw]/ {
        ++found
        if (name !~ /4Bmi2/) { print "outside its kernel: " name ": " $0; bad = 1 }
    }
    END {
        print found + 0 " instructions beyond x86-64, all but those listed inside their kernel"
        if (found == 0) { print "the kernel for newer processors is missing"; bad = 1 }
        exit bad
    }'
