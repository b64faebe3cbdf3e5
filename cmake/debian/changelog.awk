# Turns CHANGELOG.md into a changelog of Debian's form: awk -v contact="NAME <ADDRESS>" -f changelog.awk CHANGELOG.md
function sign() { if (date != "") print "\n -- " contact "  " date "\n" }
/^## / {
    sign()
    day = substr($3, 2, length($3) - 2)
    if (("date -u -R -d " day) | getline date != 1) exit 1
    print "qlprotocol (" $2 ") unstable; urgency=medium\n"
    next
}
date == "" { next } # what stands before the first version
{ sub(/^- /, "* ") }
/./ { print "  " $0 }
END { sign() }
