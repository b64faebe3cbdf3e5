#!/bin/sh
# install_test.sh prefix|packages BUILD SOURCE COMPILER: installs the build into an empty prefix, or the Debian packages of it
# into an empty root; builds the examples against that as outside projects do, by find_package and by pkg-config, runs them,
# and looks at what lies there.
#
# Packages are unpacked with dpkg-deb -x, which needs neither root nor a root file system with all they depend on.
set -eu
way=$1 build=$2 source=$3 compiler=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
setting() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"; }
fail() { echo "$*" >&2; exit 1; }
version=$(setting CMAKE_PROJECT_VERSION)

if [ "$way" = prefix ]; then
    prefix=$work/prefix
    cmake --install "$build" --prefix "$prefix" >/dev/null
else
    prefix=$work/root/usr
    (cd "$build" && cpack -B "$work/packages" -D CPACK_OUTPUT_FILE_PREFIX="$work/packages") >"$work/log" 2>&1 ||
        { cat "$work/log"; exit 1; }
    names=""
    for package in "$work"/packages/*.deb; do
        name=$(dpkg-deb -f "$package" Package) depends=$(dpkg-deb -f "$package" Depends)
        names="$names $name"
        dpkg-deb -x "$package" "$work/root"
        dpkg-deb -c "$package" | awk '$1 !~ /^d/ { print $6 }' >>"$work/files"
        case $name in
        libqlprotocol-dev) needed=$(setting BUILD_SHARED_LIBS | sed -n "s/ON/libqlprotocol1 (= $version)/p") ;;
        libqlprotocol1)
            needed=libstdc++6
            control=$(dpkg-deb --ctrl-tarfile "$package" | tar -t | sort | tr '\n' ' ')
            [ "$control" = "./control ./md5sums ./shlibs ./triggers " ] || fail "control files of $name: $control"
            ;;
        qlproto | qlgen) needed=libfmt ;;
        python3-qlproto) needed=python3-numpy ;;
        esac
        case $depends in *"$needed"*) ;; *) fail "$name depends on '$depends', not on $needed" ;; esac
        about=$prefix/share/doc/$name
        grep -q '^ /usr/share/common-licenses/Apache-2.0' "$about/copyright" || fail "$name does not tell its licence"
        gzip -dc "$about/changelog.gz" | head -n 1 | grep -qF "qlprotocol ($version) " || fail "$name: changelog"
    done
    expected=" libqlprotocol-dev qlgen qlproto"
    [ "$(setting BUILD_SHARED_LIBS)" != ON ] || expected=" libqlprotocol-dev libqlprotocol1 qlgen qlproto"
    [ "$(setting QL_PYTHON_IS_BUILT)" != ON ] || expected="${expected% qlgen qlproto} python3-qlproto qlgen qlproto"
    [ "$names" = "$expected" ] || fail "packages made:$names"
    twice=$(sort "$work/files" | uniq -d)
    [ -z "$twice" ] || fail "in two packages: $twice"
fi

library=$(dirname "$(find "$prefix" -name qlprotocol.pc)")
export PKG_CONFIG_PATH="$library" LD_LIBRARY_PATH="${library%/pkgconfig}"
flags="$(setting CMAKE_CXX_FLAGS)" # a sanitizer's, if any

check() { # HOST TRUSTED
    order='^received <SubmitOrderMessage userID=7 .*side=BID amount=100000000000000 price=108250000 '
    "$1" >"$work/output"
    grep -q "$order" "$work/output" || fail "$(cat "$work/output")"
    grep -q '^copied, equal$' "$work/output" || fail "$(cat "$work/output")"
    grep -q '^refused: truncated at byte 20 (contents.marketID)$' "$work/output" || fail "$(cat "$work/output")"
    "$2" >"$work/output"
    grep -q "$order" "$work/output" || fail "$(cat "$work/output")"
    grep -q '^copied, equal, inside its block$' "$work/output" || fail "$(cat "$work/output")"
}

documents=$prefix/share/doc/libqlprotocol-dev
cmake -S "$documents/examples" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/build" >/dev/null
check "$work/build/host" "$work/build/trusted"
"$work/build/chat/talk" | grep -q '^ann joins$'

for example in host:qlinspect trusted:qlprotocol; do
    "$compiler" -std=c++20 $flags "$documents/examples/${example%:*}.cpp" $(pkg-config --cflags --libs "${example#*:}") \
        -o "$work/${example%:*}"
done
check "$work/host" "$work/trusted"

[ "$(pkg-config --modversion qlprotocol qlinspect)" = "$version
$version" ]
grep -qF "set(PACKAGE_VERSION \"$version\")" "$library/../cmake/QLProtocol/QLProtocolConfigVersion.cmake"

# Documents find those that they link to.
(cd "$documents" && for page in $(find . -name '*.md'); do
    grep -o ']([^)#]*' "$page" | cut -c 3- | while read -r link; do
        [ -e "$(dirname "$page")/$link" ] || fail "$page: no $link"
    done
done)

# The tool, and what it tells of itself.
grep -q 'Leon Sorokin' "$prefix/share/doc/qlproto/copyright" # of the chart library
"$prefix/bin/qlproto" generate --messages 100 -o - | "$prefix/bin/qlproto" decode - | wc -l | grep -qx 100
[ "$("$prefix/bin/qlproto" --version)" = "qlproto $version" ]
[ "$(gzip -dc "$prefix/share/man/man1/qlproto.1.gz" | grep -c '^\.SS decode$')" = 1 ]
[ "$(gzip -dc "$prefix/share/man/man1/qlgen.1.gz" | grep -c '^\.B qlgen compare$')" -gt 0 ]
bash -n "$prefix/share/bash-completion/completions/qlproto"
[ -n "$(find "$prefix/share/zsh" -name _qlproto)" ]

# No text tells where it was built, and neither does a program without debug information.
kind=--binary-files=text
[ "$(setting CMAKE_BUILD_TYPE)" = Release ] || kind=--binary-files=without-match
leaks=$(grep -rl "$kind" -F -e "$source" "$prefix") || true
[ -z "$leaks" ] || fail "names a folder of the build: $leaks"

[ "$(setting QL_HARDENED)" = ON ] || exit 0
for file in "$prefix/bin/qlproto" "$prefix/bin/qlgen" "$library"/../lib*.so.*.*.*; do
    readelf -Wd "$file" | grep -q 'FLAGS_1.*NOW' || fail "$file: not bound at start"
    readelf -Wl "$file" | grep -q GNU_RELRO || fail "$file: relocations stay writable"
    [ "$(readelf -Wh "$file" | awk '$1 == "Type:" { print $2 }')" = DYN ] || fail "$file: has a fixed address"
    symbols=$(readelf -Ws --dyn-syms "$file")
    case $symbols in *__stack_chk_fail*) ;; *) fail "$file: stack not protected" ;; esac
    case $symbols in
    *_chk@GLIBC*) ;;
    *) [ "${file%.so.*}" != "$file" ] || fail "$file: no call is fortified" ;; # small libraries have none
    esac
    # The start-up files, too, have one or two.
    [ "$(objdump -d --section=.text "$file" | grep -c endbr64)" -gt 10 ] || fail "$file: targets of jumps are not marked"
done
