#include "generator/Names.h"

#include <algorithm>
#include <initializer_list>
#include <set>

#include <fmt/format.h>

#include "generator/Definition.h"

namespace qlgen {
namespace {

using Words = std::set<std::string_view>;

const Words keywords = {
    "alignas",     "alignof",  "and",        "and_eq",    "asm",       "auto",         "bitand",
    "bitor",       "bool",     "break",      "case",      "catch",     "char",         "char16_t",
    "char32_t",    "char8_t",  "class",      "co_await",  "co_return", "co_yield",     "compl",
    "concept",     "const",    "const_cast", "consteval", "constexpr", "constinit",    "continue",
    "decltype",    "default",  "delete",     "do",        "double",    "dynamic_cast", "else",
    "enum",        "explicit", "export",     "extern",    "false",     "float",        "for",
    "friend",      "goto",     "if",         "inline",    "int",       "long",         "mutable",
    "namespace",   "new",      "noexcept",   "not",       "not_eq",    "nullptr",      "operator",
    "or",          "or_eq",    "private",    "protected", "public",    "register",     "reinterpret_cast",
    "requires",    "return",   "short",      "signed",    "sizeof",    "static",       "static_assert",
    "static_cast", "struct",   "switch",     "template",  "this",      "thread_local", "throw",
    "true",        "try",      "typedef",    "typeid",    "typename",  "union",        "unsigned",
    "using",       "virtual",  "void",       "volatile",  "wchar_t",   "while",        "xor",
    "xor_eq"};

// What stands in the namespace beside the types, or is used in it without a qualifier. QLProtocol shares its namespace
// with the services of Backend/Common.
const Words takenByModule = {"AsciiWriter", "Atomic",        "Baseline",    "Bmi2",        "BufferAllocator",
                             "DumbCrypt",   "FastCodec",     "FastOStream", "ID",          "INDEX",
                             "KernelMasks", "MsgDescriptor", "MsgHandler",  "MsgProtocol", "Protocol",
                             "Quillon",     "StaticOStream", "Type",        "Name",        "Util",
                             "VERSION",     "Velmora",       "Visit"};

// Members of records and messages, and the types of members.
const Words takenByComposite = {"ID",        "INDEX",     "set",       "write",    "read",     "checkbounds",
                                "bufstring", "bufvector", "bufvectox", "int8_t",   "int16_t",  "int32_t",
                                "int64_t",   "uint8_t",   "uint16_t",  "uint32_t", "uint64_t", "BufferAllocator",
                                "FastCodec", "MsgType_t"};

// Macros that the generated code uses where the names stand; they cannot be shielded from.
const Words usedMacros = {"QL_ASSERT", "QL_COLD_PATH", "QL_FORCE_INLINE", "QL_FORCE_INLINE_LAMBDA", "VALIDATE_ENUM"};

// Files beside those that are named after the stem.
const Words otherFiles = {"asciiwriter", "catalogue", "msghandler"};

const Words otherNamespaces = {"Inspect", "Velmora", "bufstl", "std"};

// What the C library declares in the headers that generated code brings with it; no namespace can have the same name.
const Words& libraryNames() {
    static constexpr std::string_view all =
        "FILE a64l abort abs access acct alarm alloca arc4random asctime asprintf atexit atof atoi atol atoll "
        "basename bcmp bcopy brk bsearch btowc bzero calloc chdir chown chroot clearenv clearerr clock clone close "
        "closefrom confstr crypt ctermid ctime cuserid daemon daylight difftime div dprintf drand48 dup dup2 dup3 "
        "duplocale dysize eaccess ecvt endusershell environ erand48 euidaccess execl execle execlp execv execve "
        "execveat execvp execvpe exit faccessat fchdir fchown fchownat fclose fcloseall fcvt fdatasync fdopen feof "
        "ferror fexecve fflush ffs ffsl ffsll fgetc fgetpos fgetpos64 fgets fgetwc fgetws fileno flockfile fmemopen "
        "fopen fopen64 fopencookie fork fpathconf fprintf fputc fputs fputwc fputws fread free freelocale freopen "
        "freopen64 fscanf fseek fseeko fseeko64 fsetpos fsetpos64 fsync ftell ftello ftello64 ftruncate ftruncate64 "
        "ftrylockfile funlockfile fwide fwprintf fwrite fwscanf gcvt getc getchar getcpu getcwd getdate getdelim "
        "getdomainname getdtablesize getegid getentropy getenv geteuid getgid getgroups gethostid gethostname "
        "getline getloadavg getlogin getopt getpagesize getpass getpgid getpgrp getpid getppid getpt getresgid "
        "getresuid getsid getsubopt gettid getuid getusershell getw getwc getwchar getwd gmtime grantpt index "
        "initstate isalnum isalpha isascii isatty isblank iscntrl isctype isdigit isgraph islower isprint ispunct "
        "isspace isupper iswalnum iswalpha iswblank iswcntrl iswctype iswdigit iswgraph iswlower iswprint iswpunct "
        "iswspace iswupper iswxdigit isxdigit itimerspec jrand48 l64a labs lchown lcong48 lconv ldiv link linkat "
        "llabs lldiv localeconv localtime lockf lockf64 lrand48 lseek lseek64 malloc mblen mbrlen mbrtowc mbsinit "
        "mbsnrtowcs mbsrtowcs mbstowcs mbtowc memccpy memchr memcmp memcpy memfrob memmem memmove mempcpy memrchr "
        "memset mkdtemp mkostemp mkostemp64 mkostemps mkostemps64 mkstemp mkstemp64 mkstemps mkstemps64 mktemp "
        "mktime mrand48 nanosleep newlocale nice nrand48 obstack optarg opterr optind optopt pathconf pause pclose "
        "perror pipe pipe2 popen pread pread64 printf profil pselect ptsname putc putchar putenv puts putw putwc "
        "putwchar pwrite pwrite64 qecvt qfcvt qgcvt qsort rand random rawmemchr read readlink readlinkat realloc "
        "reallocarray realpath remove rename renameat renameat2 revoke rewind rindex rmdir rpmatch sbrk scanf "
        "seed48 select setbuf setbuffer setdomainname setegid setenv seteuid setgid sethostid sethostname "
        "setlinebuf setlocale setlogin setns setpgid setpgrp setregid setresgid setresuid setreuid setsid setstate "
        "setuid setusershell setvbuf sigevent sleep snprintf sprintf srand srand48 srandom sscanf stderr stdin "
        "stdout stpcpy stpncpy strcasecmp strcasestr strcat strchr strchrnul strcmp strcoll strcpy strcspn strdup "
        "strerror strfromd strfromf strfromf32 strfromf32x strfromf64 strfromf64x strfroml strfry strftime strlen "
        "strncasecmp strncat strncmp strncpy strndup strnlen strpbrk strptime strrchr strsep strsignal strspn "
        "strstr strtod strtof strtof32 strtof32x strtof64 strtof64x strtok strtol strtold strtoll strtoq strtoul "
        "strtoull strtouq strverscmp strxfrm swab swprintf swscanf symlink symlinkat sync syncfs syscall sysconf "
        "system tcgetpgrp tcsetpgrp tempnam time timegm timelocal timespec timeval timex timezone tm tmpfile "
        "tmpfile64 tmpnam toascii tolower toupper towctrans towlower towupper truncate truncate64 ttyname ttyslot "
        "tzname tzset ualarm uint ulong ungetc ungetwc unlink unlinkat unlockpt unsetenv unshare uselocale ushort "
        "usleep valloc vasprintf vdprintf vfork vfprintf vfscanf vfwprintf vfwscanf vhangup vprintf vscanf "
        "vsnprintf vsprintf vsscanf vswprintf vswscanf vwprintf vwscanf wcpcpy wcpncpy wcrtomb wcscasecmp wcscat "
        "wcschr wcschrnul wcscmp wcscoll wcscpy wcscspn wcsdup wcsftime wcslen wcsncasecmp wcsncat wcsncmp wcsncpy "
        "wcsnlen wcsnrtombs wcspbrk wcsrchr wcsrtombs wcsspn wcsstr wcstod wcstof wcstof32 wcstof32x wcstof64 "
        "wcstof64x wcstok wcstol wcstold wcstoll wcstombs wcstoq wcstoul wcstoull wcstouq wcswcs wcswidth wcsxfrm "
        "wctob wctomb wctrans wctype wcwidth wmemchr wmemcmp wmemcpy wmemmove wmempcpy wmemset wprintf write wscanf ";
    static const Words names = [] {
        Words words;
        for (size_t begin = 0, end; (end = all.find(' ', begin)) != all.npos; begin = end + 1)
            words.insert(all.substr(begin, end - begin));
        return words;
    }();
    return names;
}

bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isAlphanumeric(char c) { return isSmall(c) || isCapital(c) || isDigit(c); }

/// A letter, then letters and digits; between them single characters of `joints`.
bool isWord(std::string_view name, std::string_view joints) {
    if (name.empty() || isDigit(name.front())) return false;
    for (size_t i = 0; i < name.size(); ++i) {
        const bool isJoint = joints.find(name[i]) != joints.npos;
        if (!isJoint && !isAlphanumeric(name[i])) return false;
        if (isJoint && (i == 0 || i + 1 == name.size() || !isAlphanumeric(name[i - 1]))) return false;
    }
    return true;
}

bool isType(const std::string& name) { return isWord(name, "") && isCapital(name.front()); }
bool isEnumerator(const std::string& name) { return isWord(name, "_") && std::ranges::none_of(name, isSmall); }

/// Parts of `text` between separators, empty ones, too.
std::vector<std::string> split(const std::string& text, std::string_view separator) {
    std::vector<std::string> parts;
    size_t begin = 0;
    for (size_t end; (end = text.find(separator, begin)) != text.npos; begin = end + separator.size())
        parts.push_back(text.substr(begin, end - begin));
    parts.push_back(text.substr(begin));
    return parts;
}

std::string whyNotWord(const std::string& name, std::initializer_list<const Words*> taken) {
    if (keywords.contains(name)) return fmt::format("'{}' is a word of C++", name);
    for (const Words* words : taken)
        if (words->contains(name)) return fmt::format("the name '{}' is taken by the generated code", name);
    return "";
}

std::string whyNotNamespace(const std::string& name) {
    const std::vector<std::string> parts = split(name, "::");
    for (const std::string& part : parts) {
        if (!isWord(part, ""))
            return fmt::format("'{}' is not a namespace: words of letters and digits, with :: between them", name);
        if (const std::string why = whyNotWord(part, {&usedMacros}); !why.empty()) return why;
        // Only at the beginning can the module's own namespace stand; further inside it would hide the real one.
        if (otherNamespaces.contains(part) || (part == "Quillon" && &part != parts.data()))
            return fmt::format("the namespace '{}' belongs to others", part);
    }
    if (libraryNames().contains(parts.front())) return fmt::format("'{}' is a name of the C library", parts.front());
    return "";
}

std::string whyNotFolder(const std::string& name) {
    for (const std::string& part : split(name, "/")) {
        const auto isOdd = [](char c) { return !isAlphanumeric(c) && c != '_' && c != '-' && c != '.'; };
        if (part.empty() || part.front() == '.' || std::ranges::any_of(part, isOdd))
            return fmt::format("'{}' is not a folder: letters, digits, '_', '-' and '.', with '/' between names", name);
    }
    return "";
}

} // namespace

std::string whyNotName(NameOf of, const std::string& name) {
    if (name.size() > MAX_NAME) return fmt::format("'{}...' has more than {} characters", name.substr(0, 16), MAX_NAME);
    switch (of) {
    case NameOf::type:
        if (!isType(name))
            return fmt::format("'{}' is not a type's name: a capital letter, then letters and digits", name);
        return whyNotWord(name, {&takenByModule});
    case NameOf::enumerator:
        if (!isEnumerator(name))
            return fmt::format(
                "'{}' is not an enumerator's name: words of capital letters and digits, with '_' between them", name);
        return whyNotWord(name, {&usedMacros});
    case NameOf::cppNamespace:
        return whyNotNamespace(name);
    case NameOf::folder:
        return whyNotFolder(name);
    case NameOf::stem:
        if (otherFiles.contains(lowered(name)))
            return fmt::format("the file name '{}' is taken by the generated code", name);
        [[fallthrough]];
    default:
        if (!isWord(name, "_"))
            return fmt::format("'{}' is not a name: words of letters and digits, with '_' between them", name);
        return of == NameOf::field ? whyNotWord(name, {&takenByComposite, &usedMacros}) : "";
    }
}

std::string lowered(std::string name) {
    for (char& c : name)
        if (isCapital(c)) c = static_cast<char>(c - 'A' + 'a');
    return name;
}

} // namespace qlgen
