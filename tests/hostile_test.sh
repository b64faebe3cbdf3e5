#!/bin/sh
# hostile_test.sh COMPILER ROOT QLGEN TABLES LIBRARY...: builds and runs tests/ProtocolsTest.cpp with the protocols of
# tests/data and examples, and their tables in the folder TABLES, in the compiler's own dialect, which defines names of the system as macros, and after headers
# that define more of them. Warnings are errors.
set -eu
compiler=$1 root=$2 qlgen=$3 tables=$4
shift 4
libraries="$*" rpath=""
for library; do
    rpath="$rpath -Wl,-rpath,$(dirname "$library")"
done
set --
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

"$qlgen" "$root/tests/data/hostile.xml" made/hostile >/dev/null
"$qlgen" "$root/examples/chat/chat.xml" protocols/chat >/dev/null
for header in assert.h cerrno climits cmath csignal cstdio limits.h linux/limits.h netdb.h netinet/in.h \
    sys/stat.h sys/sysmacros.h unistd.h; do
    set -- "$@" -include "$header"
done
# shellcheck disable=SC2086
"$compiler" -std=gnu++20 -O0 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror "$@" \
    -I. -I"$root" "$root/tests/ProtocolsTest.cpp" made/hostile/*.cpp protocols/chat/*.cpp "$tables"/hostile_protocol/tables/*.cpp "$tables"/chat_protocol/tables/*.cpp $libraries -lgtest -lgtest_main -lpthread $rpath \
    -o test
./test --gtest_brief=1
