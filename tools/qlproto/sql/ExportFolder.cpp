#include "tools/qlproto/sql/ExportFolder.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/SeededHash.h"
#include "tools/qlproto/sql/AppendedFile.h"
#include "tools/qlproto/sql/ProcessName.h"
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

size_t ExportFolder::complete(const std::string& table, size_t capture, const ExportedFiles& files) {
    return asIoError([&] {
        const fs::path place = _folder / table, made = beside(table) / partOf(capture);
        size_t count = 0;
        fs::create_directories(made);
        fs::create_directories(place);
        remove(table, files);
        std::vector<fs::path> folders{"."};
        for (const auto& it : fs::directory_iterator(made))
            if (it.is_directory()) folders.push_back(it.path().filename());
        for (const fs::path& folder : folders) {
            size_t number = 0;
            for (const auto& it : fs::directory_iterator(made / folder)) {
                if (!it.is_regular_file()) continue;
                fs::create_directories(place / folder);
                fs::rename(it.path(), place / folder / fileName(files.name, number++, files.extension));
            }
            count += number;
        }
        fs::remove_all(made);
        AppendedFile mark(markOf(table, files));
        mark.append(files.how);
        mark.close();
        return count;
    });
}

void ExportFolder::remove(const std::string& table, const ExportedFiles& files) {
    asIoError([&] {
        const fs::path place = _folder / table;
        if (!fs::exists(place)) return;
        fs::remove(markOf(table, files));
        for (const auto& it : fs::recursive_directory_iterator(place))
            if (it.is_regular_file() && isNumbered(it.path().filename(), files.name, files.extension))
                fs::remove(it.path());
    });
}

bool ExportFolder::isComplete(const std::string& table, const ExportedFiles& files, fs::file_time_type newest) const {
    const fs::path mark = markOf(table, files);
    std::error_code error;
    const fs::file_time_type made = fs::last_write_time(mark, error);
    if (error || made < newest) return false;
    std::ifstream file(mark, std::ios::binary);
    return std::string(std::istreambuf_iterator(file), {}) == files.how;
}

fs::path ExportFolder::markOf(const std::string& table, const ExportedFiles& files) const {
    return _folder / table / fmt::format(".complete-{}.{}", files.name, files.extension);
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

} // namespace qlproto::sql
