#include "Capture/PcapngForm.h"

#include "Capture/Pcap.h"
#include "Capture/Pcapng.h"

namespace Capture {

namespace {

std::string block(uint32_t type, const std::string& body) {
    const std::size_t size = body.size() + Block::SMALLEST;
    std::string bytes;
    appendWords(bytes, {type, size});
    bytes += body;
    appendWords(bytes, {size});
    return bytes;
}

} // namespace

void appendOption(std::string& to, uint32_t code, std::string_view value) {
    appendWords(to, {code | value.size() << 16});
    to.append(value).append(BlockFinder::padded(value.size()) - value.size(), '\0');
}

std::string pcapngStart(const std::optional<Definition>& definition, uint32_t linkType) {
    constexpr std::size_t version = 1, unknownLength = UINT32_MAX;
    std::string section;
    appendWords(section, {Block::ORDER_MARK, version, unknownLength, unknownLength});
    if (definition) {
        appendOption(section, Pcapng::COMMENT, textOf(*definition));
        appendWords(section, {0});
    }
    std::string interface;
    appendWords(interface, {linkType, MAX_PACKET});
    appendOption(interface, Pcapng::TIME_RESOLUTION, "\x09");
    appendWords(interface, {0});
    return block(Block::SECTION, section) + block(Block::INTERFACE, interface);
}

} // namespace Capture
