#include "tools/qlproto/sql/SortedMessages.h"

#include <fstream>

#include "Capture/Errors.h"
#include "Capture/MessageSequence.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/sql/AppendedFile.h"

namespace qlproto::sql {

namespace {

/// What stands in a file before the bytes of a packet.
struct SortedHead {
    uint64_t number, original;
    int64_t time;
    uint32_t size;
    uint16_t capture;
    bool hasConnection; ///< it follows
};

class SortedPackets : public Columns::Packets {
  public:
    explicit SortedPackets(const std::filesystem::path& path) : _path(path), _file(path, std::ios::binary) {
        if (!_file) fail();
    }

    bool next(Capture::Packet& packet, uint64_t& number) override {
        SortedHead head;
        _file.read(reinterpret_cast<char*>(&head), sizeof head);
        if (_file.eof() && _file.gcount() == 0) return false;
        if (_file && head.hasConnection) _file.read(reinterpret_cast<char*>(&_connection), sizeof _connection);
        if (_file) _bytes.resize(head.size);
        if (!_file.read(_bytes.data(), static_cast<std::streamsize>(_bytes.size()))) fail();
        packet = {.time = head.time, .bytes = _bytes, .original = head.original, .capture = head.capture};
        if (head.hasConnection) packet.connection = &_connection;
        number = head.number;
        return true;
    }

  private:
    [[noreturn]] void fail() const { throw Capture::IoError(_path.string() + ": cannot be read again"); }

    const std::filesystem::path _path;
    std::ifstream _file;
    std::string _bytes;
    Capture::Connection _connection;
};

} // namespace

SortedMessages::SortedMessages(const std::vector<std::string>& captures,
                               const std::optional<Capture::NetworkOptions>& network,
                               const std::vector<Velmora::MsgType_t>& types, const std::filesystem::path& folder) {
    std::map<Velmora::MsgType_t, std::optional<AppendedFile>> files;
    for (const Velmora::MsgType_t type : types) files.try_emplace(type);
    Capture::MessageSequence messages(captures, thisTool.protocol, network);
    for (Capture::Packet packet; messages.next(packet);) {
        if (packet.bytes.size() < Capture::IDENTIFIER_SIZE) continue;
        const Velmora::MsgType_t type = Capture::identifierOf(packet.bytes);
        const auto found = files.find(type);
        if (found == files.end()) continue;
        std::optional<AppendedFile>& file = found->second;
        if (!file) file.emplace(_files[type] = folder / std::to_string(type));
        const SortedHead head{messages.messages(packet.capture),
                              packet.original,
                              packet.time,
                              static_cast<uint32_t>(packet.bytes.size()),
                              static_cast<uint16_t>(packet.capture),
                              packet.connection != nullptr};
        file->append({reinterpret_cast<const char*>(&head), sizeof head});
        if (head.hasConnection)
            file->append({reinterpret_cast<const char*>(packet.connection), sizeof *packet.connection});
        file->append(packet.bytes);
    }
    for (auto& [type, file] : files)
        if (file) file->close();
}

std::unique_ptr<Columns::Packets> SortedMessages::open(Velmora::MsgType_t type) const {
    return std::make_unique<SortedPackets>(_files.at(type));
}

void SortedMessages::remove(Velmora::MsgType_t type) {
    std::error_code error; // the folder goes with all that is in it anyway
    std::filesystem::remove(_files.at(type), error);
}

} // namespace qlproto::sql
