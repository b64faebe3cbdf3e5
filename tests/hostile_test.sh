#!/bin/sh
# hostile_test.sh COMPILER ROOT QLGEN LIBRARY: builds and runs tests/ProtocolsTest.cpp with the protocol of
# tests/data/hostile.xml in the compiler's own dialect, which defines names of the system as macros, and after headers
# that define more of them. Warnings are errors.
set -eu
compiler=$1 root=$2 qlgen=$3 library=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$qlgen" "$root/tests/data/hostile.xml" made/hostile >/dev/null
for header in assert.h cerrno climits cmath csignal cstdio limits.h linux/limits.h netdb.h netinet/in.h \
    sys/stat.h sys/sysmacros.h unistd.h; do
    set -- "$@" -include "$header"
done
shift 4
# shellcheck disable=SC2086
"$compiler" -std=gnu++20 -O0 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror "$@" \
    -I. -I"$root" "$root/tests/ProtocolsTest.cpp" made/hostile/*.cpp "$library" -lgtest -lgtest_main -lpthread \
    -Wl,-rpath,"$(dirname "$library")" -o test
./test --gtest_brief=1
