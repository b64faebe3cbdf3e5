# What is packaged is hardened as Debian's own builds are, and its functions carry the marks of control-flow enforcement (CET).
# Debian 12's start-up files carry none, so that its linker leaves the programs unmarked all the same.
add_compile_options(-fstack-protector-strong -fstack-clash-protection -fcf-protection -Wformat -Werror=format-security
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
add_link_options(-Wl,-z,relro -Wl,-z,now)
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
