#!/bin/sh
# own_protocol_test.sh BUILD COMPILER GENERATOR: a project with a protocol of its own, examples/chat, built against what is
# installed, by Ninja or by make.
set -eu
build=$1 compiler=$2 generator=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
setting() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"; }
fail() { echo "$*" >&2; exit 1; }
cmake --install "$build" --prefix "$work/prefix" >/dev/null
prefix=$work/prefix
export CMAKE_PREFIX_PATH="$prefix" CXX="$compiler"
LD_LIBRARY_PATH=$(dirname "$(dirname "$(find "$prefix" -name qlprotocol.pc)")")
export LD_LIBRARY_PATH
cd "$work"

# The library is linked in a folder beside the one that makes it; the other's code is committed.
mkdir -p host/elsewhere
cp -R "$prefix/share/doc/libqlprotocol-dev/examples/chat" host/chat
cat >host/talk.xml <<'END'
<protocol name="Talk" version="1" namespace="Talk" stem="Talk">
  <message name="SayMessage" id="0x0001" doc="Someone says something."><field name="text" type="string" doc="what"/></message>
</protocol>
END
"$prefix/bin/qlgen" host/talk.xml host/generated/Talk >/dev/null
cat >host/CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(Host LANGUAGES CXX)
add_subdirectory(elsewhere)
add_subdirectory(chat)
find_package(QLProtocol REQUIRED)
ql_add_protocol(talks DEFINITION talk.xml COMMITTED generated/Talk)
END
cat >host/elsewhere/CMakeLists.txt <<'END'
add_executable(elsewhere main.cpp)
target_link_libraries(elsewhere PRIVATE chat)
END
cat >host/elsewhere/main.cpp <<'END'
#include "protocols/chat/Chat.traits.h"
int main() { return Chat::ChatTraits::VERSION - 1; }
END
cmake -S host -B made -G "$generator" -DCMAKE_CXX_FLAGS="$(setting CMAKE_CXX_FLAGS) -O0" >log || fail "$(cat log)"
build() { cmake --build made -j2 >log 2>&1; }
works() { grep -cE '(Building|Generating|Checking|Linking) ' log || true; }

build || fail "$(cat log)"
[ "$(made/chat/talk)" = 'ann joins
<SayMessage user="ann" text="hello" mood=LOUD>' ] || fail "talk: $(made/chat/talk)"
made/elsewhere/elsewhere
echo '{"message": "JoinMessage", "body": {"person": {"name": "ann", "since": 1}, "password": "x"}}' | made/chat/chatproto encode - -o chat.pcap
made/chat/chatproto decode --redact chat.pcap | grep -q 'JoinMessage .*password=\*\*\*$' || fail "chatproto decode"

build
[ "$(works)" = 0 ] || fail "built again although nothing changed: $(cat log)"

sed -i 's/name="mood"/name="tone"/' host/chat/chat.xml
sed -i 's/said.mood/said.tone/' host/chat/talk.cpp
build || fail "$(cat log)"
made/chat/talk | grep -q 'tone=LOUD' || fail "not built from the changed definition: $(cat log)"
build
[ "$(works)" = 0 ] || fail "built for ever: $(cat log)" # some of what is generated did not change

sed -i 's/name="text"/name="word"/' host/talk.xml
! build || fail "committed code of another definition was taken"
grep -q 'Talk.h is not current' log || fail "$(cat log)"

# What the document says is typed gives what it says is printed.
[ "$generator" = Ninja ] || exit 0
mkdir acme
cd acme
awk '/^```/ { n++; next } n == 1' "$prefix/share/doc/libqlprotocol-dev/docs/own-protocol.md" >typed
awk '/^```/ { n++; next } n == 3' "$prefix/share/doc/libqlprotocol-dev/docs/own-protocol.md" >printed
CXXFLAGS="$(setting CMAKE_CXX_FLAGS) -O0" sh -eu typed >log 2>errors || fail "$(cat log errors)"
tail -n 1 log | cmp -s - printed || fail "$(cat log)"
