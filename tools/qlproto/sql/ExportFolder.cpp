#include "tools/qlproto/sql/ExportFolder.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/SeededHash.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto::sql {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view PART = ".part-";

/// Does it; what std::filesystem throws becomes an error of ours.
template <class Do>
auto asIoError(Do&& it) {
    try {
        return it();
    } catch (const fs::filesystem_error& error) {
        throw Capture::IoError(error.path1().string() + ": " + error.code().message());
    }
}

std::string fileName(const std::string& name, size_t number, const std::string& extension) {
    return name + (number == 0 ? "" : fmt::format("-{}", number)) + '.' + extension;
}

bool isNumbered(const std::string& file, const std::string& name, const std::string& extension) {
    if (!file.starts_with(name) || !file.ends_with('.' + extension)) return false;
    const std::string_view number =
        std::string_view(file).substr(name.size(), file.size() - name.size() - extension.size() - 1);
    return number.empty() || (number[0] == '-' && number.find_first_not_of("0123456789", 1) == number.npos);
}

} // namespace

bool isOfDeadProcess(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix)) return false;
    pid_t process = 0;
    const char* const end = name.data() + name.size();
    const auto [last, error] = std::from_chars(name.data() + prefix.size(), end, process);
    return error == std::errc() && (last == end || *last == '-') && process > 0 && kill(process, 0) != 0
           && errno == ESRCH;
}

ExportFolder::ExportFolder(const std::string& path) : _folder(path) {
    asIoError([&] {
        fs::create_directories(_folder);
        for (const auto& it : fs::directory_iterator(_folder))
            if (isOfDeadProcess(it.path().filename().native(), PART)) fs::remove_all(it.path());
        _part = _folder / fmt::format("{}{}", PART, getpid());
        fs::remove_all(_part);
        fs::create_directory(_part);
    });
}

ExportFolder::~ExportFolder() {
    std::error_code error;
    fs::remove_all(_part, error);
}

size_t ExportFolder::complete(const std::string& table, const std::string& name, const std::string& extension) {
    return asIoError([&] {
        size_t files = 0;
        fs::create_directories(beside(table));
        fs::create_directories(_folder / table);
        fs::remove(markOf(table, name, extension));
        for (const auto& it : fs::recursive_directory_iterator(_folder / table)) // what an earlier export has made
            if (it.is_regular_file() && isNumbered(it.path().filename(), name, extension)) fs::remove(it.path());
        std::vector<fs::path> folders{"."};
        for (const auto& it : fs::directory_iterator(beside(table)))
            if (it.is_directory()) folders.push_back(it.path().filename());
        for (const fs::path& folder : folders) {
            size_t number = 0;
            for (const auto& it : fs::directory_iterator(beside(table) / folder)) {
                if (!it.is_regular_file()) continue;
                fs::create_directories(_folder / table / folder);
                fs::rename(it.path(), _folder / table / folder / fileName(name, number++, extension));
            }
            files += number;
        }
        fs::remove_all(beside(table));
        LineFile(markOf(table, name, extension)).close();
        return files;
    });
}

bool ExportFolder::isComplete(const std::string& table, const std::string& name, const std::string& extension,
                              const std::string& capture) const {
    struct stat made {
    }, read{};
    return stat(markOf(table, name, extension).c_str(), &made) == 0 && stat(capture.c_str(), &read) == 0
           && std::pair(made.st_mtim.tv_sec, made.st_mtim.tv_nsec)
                  >= std::pair(read.st_mtim.tv_sec, read.st_mtim.tv_nsec);
}

fs::path ExportFolder::markOf(const std::string& table, const std::string& name, const std::string& extension) const {
    return _folder / table / fmt::format(".complete-{}.{}", name, extension);
}

std::string ExportFolder::nameOf(const std::string& capture) {
    std::error_code error;
    const fs::path path = fs::weakly_canonical(capture, error);
    const auto hash = static_cast<uint32_t>(Capture::sipHash(path.native(), {0, 0})); // the same in each run
    std::string stem = fs::path(capture).filename();
    for (char& c : stem)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '_') c = '_';
    return fmt::format("{}-{:08x}", stem, hash);
}

std::string ExportFolder::hourOf(int64_t time) {
    return "hour=" + timeText(time, TimeForm::utc).substr(0, std::strlen("2024-03-04T07"));
}

LineFile::LineFile(const fs::path& path) : _path(path) {
    asIoError([&] { fs::create_directories(path.parent_path()); });
    _file = open(_path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (_file < 0) fail();
    struct stat status {};
    _isNew = fstat(_file, &status) == 0 && status.st_size == 0;
}

LineFile::~LineFile() {
    if (_file >= 0) ::close(_file);
}

void LineFile::append(std::string_view lines) {
    constexpr size_t capacity = 256 * 1024;
    _lines += lines;
    if (_lines.size() >= capacity) flush();
}

void LineFile::flush() {
    for (std::string_view left = _lines; !left.empty();) {
        const ssize_t written = write(_file, left.data(), left.size());
        if (written < 0 && errno != EINTR) fail();
        left.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
    }
    _lines.clear();
}

void LineFile::close() {
    flush();
    if (::close(std::exchange(_file, -1)) != 0) fail();
}

void LineFile::fail() const { throw Capture::IoError(_path + ": " + std::strerror(errno)); }

} // namespace qlproto::sql
