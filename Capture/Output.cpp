#include "Capture/Output.h"

#include <cstring>

#include "Capture/Errors.h"

namespace Capture {

Output::Output(const std::string& path) : _file(path), _buffer(std::make_unique_for_overwrite<char[]>(CAPACITY)) {}

void Output::append(std::string_view text) {
    if (text.size() > CAPACITY - _size) {
        flush();
        if (text.size() > CAPACITY) return _file.write(text);
    }
    std::memcpy(_buffer.get() + _size, text.data(), text.size());
    _size += text.size();
}

void Output::flush() {
    const std::size_t size = _size;
    _size = 0; // first, so that nothing is written twice after an error
    _file.write({_buffer.get(), size});
}

void Output::close() {
    flush();
    _file.complete();
}

void writeText(std::string_view text, const std::string& path) {
    Output output(path);
    whileRead([&] {
        output.append(text);
        output.close();
    });
}

} // namespace Capture
