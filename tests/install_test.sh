#!/bin/sh
# install_test.sh BUILD EXAMPLES COMPILER: installs the build into an empty prefix, builds the examples against it as an
# outside project does, and runs the host.
set -eu
build=$1 examples=$2 compiler=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
flags=$(sed -n 's/^CMAKE_CXX_FLAGS:[A-Z]*=//p' "$build/CMakeCache.txt") # a sanitizer's, if any
cmake -S "$examples" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/build" >/dev/null
"$work/build/host" >"$work/output"
cat "$work/output"
grep -q '^received <SubmitOrderMessage userID=7 .*side=BID .*price=108250000 ' "$work/output"
grep -q '^copied, equal, inside its block$' "$work/output"
