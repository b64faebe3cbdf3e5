#include "Capture/Writer.h"

#include <utility>

#include "Capture/Pcap.h"
#include "Capture/PcapngForm.h"
#include "Capture/ZstdFrames.h"

namespace Capture {

namespace {

constexpr int64_t NANOSECONDS = 1'000'000'000;

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
        _record = pcapngStart(_definition, _form.linkType);
    else
        appendWords(_record,
                    {MAGIC_NANOSECONDS, VERSION_MAJOR | VERSION_MINOR << 16, 0, 0, MAX_PACKET, _form.linkType});
    append(_record);
}

Writer::~Writer() = default;

void Writer::packet(const Packet& packet) {
    _record.clear();
    if (_form.container == WriterForm::Container::pcapng) {
        appendPacketHead(_record, packet);
        appendWords(_record, {_record.size() + 4});
    } else {
        const std::size_t size = packet.bytes.size(), original = packet.original != 0 ? packet.original : size;
        const auto time = static_cast<uint64_t>(packet.time);
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
