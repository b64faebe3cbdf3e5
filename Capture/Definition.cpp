#include "Capture/Definition.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Inspect/Json.h"
#include "Inspect/JsonCursor.h"

namespace Capture {

namespace {

constexpr std::size_t LONGEST = 4096;

std::string fileBeside(const std::string& capture) { return capture + ".definition"; }

/// The text of a regular file; nothing if there is no file.
std::optional<std::string> readSmall(const std::string& path) {
    const int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0 && (errno == ENOENT || errno == ENOTDIR)) return {};
    struct ::stat status {};
    std::string text(LONGEST + 1, '\0');
    ssize_t size = -1;
    if (fd >= 0 && fstat(fd, &status) == 0) size = S_ISREG(status.st_mode) ? read(fd, text.data(), text.size()) : 0;
    const int error = errno;
    if (fd >= 0) close(fd);
    if (size < 0) throw IoError(std::strerror(error));
    if (!S_ISREG(status.st_mode)) throw IoError("no regular file");
    if (static_cast<std::size_t>(size) > LONGEST) throw IoError("too long");
    text.resize(static_cast<std::size_t>(size));
    return text;
}

/// What the text says, and of a capture of how many bytes. Throws Inspect::JsonError.
std::pair<Definition, std::string> parse(std::string_view text) {
    using Inspect::JsonCursor;
    Definition definition;
    std::string size;
    JsonCursor json(text);
    const auto expect = [&](JsonCursor::Next kind, const std::string& name) {
        if (json.next() != kind) throw Inspect::JsonError(name, "missing or of another kind");
    };
    expect(JsonCursor::Next::object, "");
    json.object([&](std::string_view given) {
        const std::string name(given);
        for (auto& [known, value] : {std::pair("protocol", &definition.protocol), std::pair("wire", &definition.wire),
                                     std::pair("names", &definition.names)}) {
            if (name != known) continue;
            expect(JsonCursor::Next::string, name);
            value->assign(json.string());
            return;
        }
        if (name != "version" && name != "size") return json.skip();
        expect(JsonCursor::Next::number, name);
        const std::string number(json.number().text);
        if (name == "size")
            size = number;
        else
            definition.version = std::atoi(number.c_str());
    });
    json.end();
    return {definition, size};
}

std::string nameOf(const Definition& it) { return it.protocol + ' ' + std::to_string(it.version); }

std::string difference(const std::string& capture, const Definition& theirs, const Definition& own) {
    const std::string made = capture + ": made with another definition, " + nameOf(theirs);
    if (theirs.wire != own.wire) return made + ": values may be misread by " + nameOf(own) + ", which is built in";
    if (theirs.names != own.names) return made + ": its bodies are the same, its names are not";
    return "";
}

} // namespace

std::string textOf(const Definition& it) {
    return "{\"protocol\": \"" + it.protocol + "\", \"version\": " + std::to_string(it.version) + ", \"wire\": \""
           + it.wire + "\", \"names\": \"" + it.names + "\"}";
}

void noteDefinition(const std::string& capture, const Definition& it) {
    std::string text = textOf(it);
    text.pop_back();
    writeText(text + ", \"size\": " + std::to_string(std::filesystem::file_size(capture)) + "}\n", fileBeside(capture));
}

std::string differenceOfDefinition(const std::string& capture, const std::string& text, const Definition& own) {
    if (text.empty()) return "";
    try {
        return difference(capture, parse(text).first, own);
    } catch (const std::exception& e) {
        return capture + ": does not tell its definition: " + e.what();
    }
}

std::string differenceOfDefinition(const std::string& capture, const Definition& own) {
    try {
        const std::optional<std::string> text = readSmall(fileBeside(capture));
        if (!text) return "";
        const auto [theirs, size] = parse(*text);
        std::error_code error;
        if (size != std::to_string(std::filesystem::file_size(capture, error)) || error) return "";
        return difference(capture, theirs, own);
    } catch (const std::exception& e) {
        return fileBeside(capture) + ": does not tell the capture's definition: " + e.what();
    }
}

} // namespace Capture
