// The messages of captures, told apart by type: read once, into a file a type, however many tables are made of them.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Network.h"
#include "Columns/Scan.h"

namespace qlproto::sql {

class SortedMessages {
  public:
    /// Reads the captures, as Capture::MessageSequence does. Messages of these types go into files in the folder, which the
    /// caller removes. Throws as that does.
    SortedMessages(const std::vector<std::string>& captures, const std::optional<Capture::NetworkOptions>& network,
                   const std::vector<Velmora::MsgType_t>& types, const std::filesystem::path& folder);

    bool has(Velmora::MsgType_t type) const { return _files.contains(type); }

    /// Those of a type. Throws Capture::IoError. REQUIRES: there are some.
    std::unique_ptr<Columns::Packets> open(Velmora::MsgType_t type) const;

    /// Removes the file of a type.
    void remove(Velmora::MsgType_t type);

  private:
    std::map<Velmora::MsgType_t, std::filesystem::path> _files;
};

} // namespace qlproto::sql
