#include "Capture/Writer.h"

#include <initializer_list>
#include <utility>

#include "Capture/Blocks.h"
#include "Capture/Pcap.h"
#include "Capture/Pcapng.h"
#include "Capture/ZstdFrames.h"

namespace Capture {

namespace {

constexpr int64_t NANOSECONDS = 1'000'000'000;

/// In the byte order of this machine: readers tell it by the first words.
void appendWords(std::string& to, std::initializer_list<std::size_t> numbers) {
    for (const std::size_t number : numbers) {
        const auto word = static_cast<uint32_t>(number);
        to.append(reinterpret_cast<const char*>(&word), sizeof(word));
    }
}

std::string words(std::initializer_list<std::size_t> numbers) {
    std::string bytes;
    appendWords(bytes, numbers);
    return bytes;
}

void fillUp(std::string& bytes) { bytes.append(-bytes.size() % 4, '\0'); }

std::string option(uint32_t code, std::string_view value) {
    std::string bytes = words({code | value.size() << 16}).append(value);
    fillUp(bytes);
    return bytes;
}

std::string block(uint32_t type, const std::string& body) {
    const std::size_t size = body.size() + Block::SMALLEST;
    return words({type, size}) + body + words({size});
}

/// What a pcapng file begins with: a section and its only interface.
std::string pcapngStart(const std::optional<Definition>& definition) {
    constexpr std::size_t version = 1, unknownLength = UINT32_MAX;
    std::string section = words({Block::ORDER_MARK, version, unknownLength, unknownLength});
    if (definition) section += option(Pcapng::COMMENT, textOf(*definition)) + words({0});
    return block(Block::SECTION, section)
           + block(Block::INTERFACE,
                   words({LINK_TYPE, MAX_PACKET}) + option(Pcapng::TIME_RESOLUTION, "\x09") + words({0}));
}

} // namespace

WriterForm WriterForm::of(std::string_view path) {
    WriterForm form;
    form.isCompressed = path.ends_with(".zst");
    if (form.isCompressed) path.remove_suffix(4);
    if (path.ends_with(".pcapng")) form.container = Container::pcapng;
    return form;
}

Writer::Writer(const std::string& path, const WriterForm& form, std::optional<Definition> definition)
    : _path(path), _form(form), _definition(std::move(definition)), _output(path) {
    if (_form.isCompressed) _frames = std::make_unique<ZstdFrames>(_output);
    if (_form.container == WriterForm::Container::pcapng)
        append(pcapngStart(_definition));
    else
        append(words({MAGIC_NANOSECONDS, VERSION_MAJOR | VERSION_MINOR << 16, 0, 0, MAX_PACKET, LINK_TYPE}));
}

Writer::~Writer() = default;

void Writer::packet(const Packet& packet) {
    const std::size_t size = packet.bytes.size(), original = packet.original != 0 ? packet.original : size;
    const auto time = static_cast<uint64_t>(packet.time);
    _record.clear();
    if (_form.container == WriterForm::Container::pcapng) {
        const std::size_t whole = Block::EMPTY_PACKET + BlockFinder::padded(size);
        appendWords(_record, {Block::PACKET, whole, 0, time >> 32, time, size, original});
        _record += packet.bytes;
        fillUp(_record);
        appendWords(_record, {whole});
    } else {
        appendWords(_record, {time / NANOSECONDS, time % NANOSECONDS, size, original});
        _record += packet.bytes;
    }
    append(_record);
}

void Writer::append(std::string_view bytes) {
    _size += bytes.size();
    if (_frames)
        _frames->append(bytes);
    else
        _output.append(bytes);
}

void Writer::flush() {
    if (_frames) _frames->endFrame();
    _output.flush();
}

void Writer::close() {
    if (_frames) _frames->close();
    _output.close();
    const bool isTold = _form.container == WriterForm::Container::pcapng;
    if (_definition && !isTold && _output.isFile()) noteDefinition(_path, *_definition);
}

} // namespace Capture
