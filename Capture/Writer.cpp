#include "Capture/Writer.h"

#include <utility>

#include "Capture/Pcap.h"

namespace Capture {

namespace {
constexpr int64_t NANOSECONDS = 1'000'000'000;
}

Writer::Writer(const std::string& path, std::optional<Definition> definition)
    : _path(path), _definition(std::move(definition)), _output(path) {
    append(
        {MAGIC_NANOSECONDS, VERSION_MAJOR | VERSION_MINOR << 16, 0, 0, static_cast<uint32_t>(MAX_PACKET), LINK_TYPE});
}

void Writer::packet(const Packet& packet) {
    const auto size = static_cast<uint32_t>(packet.bytes.size());
    append({static_cast<uint32_t>(packet.time / NANOSECONDS), static_cast<uint32_t>(packet.time % NANOSECONDS), size,
            size});
    _output.append(packet.bytes);
}

/// In the byte order of this machine: readers tell it by the first word.
void Writer::append(std::initializer_list<uint32_t> words) {
    _output.append({reinterpret_cast<const char*>(words.begin()), words.size() * sizeof(uint32_t)});
}

void Writer::close() {
    _output.close();
    if (_definition && _output.isFile()) noteDefinition(_path, *_definition);
}

} // namespace Capture
