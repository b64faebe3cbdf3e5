#!/bin/sh
# load_test.sh HOST_OBJECT LIBRARY_OBJECT...: what runs when a program is loaded. A source that includes the headers adds
# nothing. Of the library one source has something to do, and does no more than set up the standard streams and the
# registry's map.
set -eu
fail() { echo "$*" >&2; exit 1; }
startsUp() { objdump -h "$1" | grep -qE '\.(init_array|ctors)'; }

! startsUp "$1" || fail "$1: a source that only includes the headers has something to do at load time"
shift
starting=
for object; do
    ! startsUp "$object" || starting="$starting $object"
done
case "$starting" in
*QLProtocol.cpp.o) [ "$starting" = " ${starting##* }" ] || fail "more than one source has something to do:$starting" ;;
*) fail "expected QLProtocol.cpp alone, not:$starting" ;;
esac

# What the functions of that source that run at load time call. They stand in these sections; the others are many.
calls=$(objdump -dr --no-show-raw-insn -j .text -j .text.startup -j .text.unlikely "${starting# }" | c++filt | awk '
    /^[0-9a-f]+ <.*>:$/ { isAtLoad = /_GLOBAL__sub_I|__static_initialization_and_destruction|__cxx_global_var_init/ }
    isAtLoad && sub(/.*: R_X86_64_PLT32[ \t]+/, "")')
echo "$calls" | grep -q 'ios_base::Init::Init' || fail "the initialiser of the standard streams is missing"
others=$(echo "$calls" | grep -vE \
    'ios_base::Init::Init|MsgRegistry<|_Prime_rehash_policy|_Hashtable|operator (new|delete)|^(memset|__cxa_atexit|_Unwind_Resume|std::__throw)' || true)
[ -z "$others" ] || fail "at load time the library also calls: $others"
