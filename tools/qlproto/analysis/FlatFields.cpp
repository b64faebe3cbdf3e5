#include "tools/qlproto/analysis/FlatFields.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

#include "Capture/Packet.h"
#include "Inspect/Json.h"
#include "Inspect/Values.h"
#include "tools/qlproto/Tool.h"

namespace qlproto {

namespace {

using Inspect::Path;
using Inspect::Value;

/// As JSON has it, in ASCII.
std::string textOf(const Value& value, const Inspect::Display& display) {
    if (!value.is_text()) return Inspect::number_text(value, display);
    if (!value.isStored) return "null";
    return nlohmann::json::parse(Inspect::json_text(value.text)).dump(-1, ' ', true);
}

/// Is shown the values that count.
class Counting : public Inspect::ValueVisitor {
  public:
    explicit Counting(const std::vector<std::string>& ignored) : _ignored(ignored) {}

    bool value(Path path, const Value& value) final {
        if (!isIgnored(path)) add(path, value);
        return true;
    }
    bool vector(Path path, const Value& vector) final {
        if (!isIgnored(path)) addVector(path, vector);
        return true;
    }

  private:
    virtual void add(Path path, const Value& value) = 0;
    virtual void addVector(Path path, const Value& vector) = 0;

    bool isIgnored(Path path) const {
        return std::any_of(path.begin(), path.end(), [this](const Inspect::PathPiece& piece) {
            return std::find(_ignored.begin(), _ignored.end(), piece.name) != _ignored.end();
        });
    }

    const std::vector<std::string>& _ignored;
};

class Lister : public Counting {
  public:
    Lister(const std::vector<std::string>& ignored, const Inspect::Display& display)
        : Counting(ignored), _display(display) {}
    std::vector<FlatField> fields;

  private:
    void add(Path path, const Value& value) override {
        std::string text = textOf(value, _display);
        const bool isNamed = value.kind == Inspect::Kind::enumeration && text != "0";
        const bool isSet = value.number != 0 || !value.text.empty() || isNamed;
        fields.push_back({Inspect::path_text(path), std::move(text), isSet, value.isSecret, value.isTime});
    }
    void addVector(Path path, const Value& vector) override {
        if (vector.number == 0) fields.push_back({Inspect::path_text(path), "[]", false, vector.isSecret, false});
    }

    const Inspect::Display& _display;
};

/// Numbers in groups of seven bits, of which none is the beginning of another, and texts after their length: with type and
/// ignored fields the same, the bytes can be read in one way only.
class Packer : public Counting {
  public:
    Packer(const std::vector<std::string>& ignored, std::string before) : Counting(ignored), bytes(std::move(before)) {}
    std::string bytes;

  private:
    void add(Path, const Value& value) override {
        if (!value.is_text()) return append(static_cast<uint64_t>(value.number));
        append(value.isStored ? value.text.size() + 1 : 0);
        bytes += value.text;
    }
    void addVector(Path, const Value& vector) override { append(static_cast<uint64_t>(vector.number)); }

    void append(uint64_t number) {
        for (; number >= 0x80; number >>= 7) bytes += static_cast<char>(number | 0x80);
        bytes += static_cast<char>(number);
    }
};

} // namespace

std::vector<FlatField> flatFields(Velmora::MsgType_t id, const void* message, const Inspect::Display& display,
                                  const std::vector<std::string>& ignored) {
    Lister lister(ignored, display);
    Inspect::walk_values(thisTool.protocol, id, message, lister);
    return std::move(lister.fields);
}

std::string valueBytes(Velmora::MsgType_t id, const void* message, const std::vector<std::string>& ignored) {
    Packer packer(ignored, Capture::identifierBytes(id));
    Inspect::walk_values(thisTool.protocol, id, message, packer);
    return std::move(packer.bytes);
}

} // namespace qlproto
