#include "tools/qlproto/sql/ProcessName.h"

#include <cerrno>
#include <charconv>
#include <csignal>

namespace qlproto::sql {

bool isOfDeadProcess(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix)) return false;
    pid_t process = 0;
    const char* const end = name.data() + name.size();
    const auto [last, error] = std::from_chars(name.data() + prefix.size(), end, process);
    return error == std::errc() && (last == end || *last == '-') && process > 0 && kill(process, 0) != 0
           && errno == ESRCH;
}

} // namespace qlproto::sql
