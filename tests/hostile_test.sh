#!/bin/sh
# hostile_test.sh COMPILER ROOT QLGEN INSPECT LIBRARY: builds and runs tests/ProtocolsTest.cpp with the protocols of
# tests/data in the compiler's own dialect, which defines names of the system as macros, and after headers
# that define more of them. Warnings are errors.
set -eu
compiler=$1 root=$2 qlgen=$3 inspect=$4 library=$5
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

for protocol in hostile chat; do
    "$qlgen" "$root/tests/data/$protocol.xml" made/$protocol >/dev/null
done
for header in assert.h cerrno climits cmath csignal cstdio limits.h linux/limits.h netdb.h netinet/in.h \
    sys/stat.h sys/sysmacros.h unistd.h; do
    set -- "$@" -include "$header"
done
shift 5
# shellcheck disable=SC2086
"$compiler" -std=gnu++20 -O0 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror "$@" \
    -I. -I"$root" "$root/tests/ProtocolsTest.cpp" made/*/*.cpp "$inspect" "$library" -lgtest -lgtest_main -lpthread \
    -Wl,-rpath,"$(dirname "$library"):$(dirname "$inspect")" -o test
./test --gtest_brief=1
