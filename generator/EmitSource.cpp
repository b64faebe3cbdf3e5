// QLProtocol.cpp: the definitions, one line per member.
//
//     void MDEntry::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
//
// then compile-time facts about the definition, and the registry.
#include <algorithm>

#include <fmt/format.h>

#include "generator/Emit.h"

namespace qlgen {
namespace {

void addEnumeration(Text& text, const Enumeration& enumeration) {
    text.add(R"(
bool $T::_initialized = false;
const char* $T::_names[_maxValue + 1];
unsigned char $T::_toIndex[_maxValue + 1];
$T::Type $T::_fromIndex[_nbValues];
void $T::initialize() { Velmora::initializeEnumeration<$T>(); }
std::ostream& operator<<(std::ostream& os, $T::Type value) { return Velmora::printEnumerator<$T>(os, value); }
FastOStream& operator<<(FastOStream& os, $T::Type value) { return Velmora::printEnumerator<$T>(os, value); }
)",
             {{"T", enumeration.name}});
}

/// "components(alloc)": only what holds storage is built with the allocator.
std::string initialisers(const Composite& type) {
    std::string list;
    for (const Field& field : type.fields)
        if (field.holdsStorage) list += fmt::format("{}{}(alloc)", list.empty() ? "" : ", ", field.name);
    return list;
}

void addComposite(Text& text, const Composite& type) {
    text.add("\n");
    if (type.holdsStorage())
        text.add("$T::$T(BufferAllocator& alloc) : $initialisers {}\n$T::~$T() = default;\n",
                 {{"T", type.name}, {"initialisers", initialisers(type)}});
    text.add(R"(bool $T::operator==(const $T& other) const { return !(*this != other); }
bool $T::operator!=(const $T& other) const { return Velmora::differ(*this, other); }
bool $T::operator<(const $T& other) const { return Velmora::less(*this, other); }
void $T::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void $T::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void $T::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const $T& value) { return Velmora::print<AsciiWriter>(os, "<$T ", value); }
FastOStream& operator<<(FastOStream& os, const $T& value) { return Velmora::print<AsciiWriter>(os, "<$T ", value); }
)",
             {{"T", type.name}});
}

void addFacts(Text& text, const Definition& definition) {
    const auto all = composites(definition);
    const auto backed = std::ranges::count_if(all, [](const Composite* type) { return type->holdsStorage(); });
    text.add(R"(
// What the definition says, found again in the lists.
namespace {

constexpr auto allEnumerations = [](auto visit) { return enumerations(visit); };
constexpr auto allRecords = [](auto visit) { return records(visit); };
constexpr auto allMessages = [](auto visit) { return messages(visit); };

static_assert(Velmora::countTypes(allEnumerations) == $enumerations);
static_assert(Velmora::countTypes(allRecords) == $records);
static_assert(Velmora::countTypes(allMessages) == $messages);
static_assert(Velmora::countHoldingStorage(allRecords) + Velmora::countHoldingStorage(allMessages) == $backed);
static_assert(Velmora::plainUnlessHoldingStorage(allRecords) && Velmora::plainUnlessHoldingStorage(allMessages));
static_assert(Velmora::indexedInOrder(allMessages));
static_assert(Velmora::idsDistinct(allMessages));

} // namespace
)",
             {{"enumerations", fmt::to_string(definition.enumerations.size())},
              {"records", fmt::to_string(definition.records.size())},
              {"messages", fmt::to_string(definition.messages.size())},
              {"backed", fmt::to_string(backed)}});
}

std::string definitionArray(const Definition& definition) {
    if (definition.definitionBytes == 0) return "";
    return fmt::format("    // Deliberate: declared only; the module ships without its compressed definition.\n"
                       "    [[maybe_unused]] static const unsigned char _definition[{}];\n",
                       definition.definitionBytes);
}

void addModule(Text& text, const Definition& definition) {
    text.add(R"~(
// The module.

MsgProtocol* __protocol = nullptr;

namespace {

bool initialized = false; // deliberate: set once and for all; nothing reads it, and finalize() leaves it set

constexpr size_t _modulo = $modulo;
static_assert(Velmora::idsDistinct<_modulo>(allMessages), "two messages share a slot of the direct table");
Velmora::MsgRegistry<_modulo> registry($entries);
int _index[$messages]; // identifiers in the order of INDEX

const char* const _name = "$name";
const char* const _protosig = "$signature";
const char* const _protosigAPI = "$API";
const char* const _protosigStorage = "$storage";

class Protocol : public MsgProtocol {
  public:
    const char* getName() const override { return _name; }
    MsgDescriptor* getDescriptor(MsgType_t id) const override { return registry.find(id); }
    const void* getCompressedDefinition(size_t& length) const override {
        length = sizeof _definitionNotSupported - 1;
        return _definitionNotSupported;
    }
    const char* getSignature() const override { return _protosig; }
    const char* getSignatureAPI() const override { return _protosigAPI; }
    const char* getSignatureStorage() const override { return _protosigStorage; }
    const int* getMessageIndex(size_t& count) const override {
        count = std::size(_index);
        return _index;
    }
    const char* getMessageName(MsgType_t id) const override { return getDescriptor(id)->name(); }

  private:
$definition    static constexpr char _definitionNotSupported[] = $definitionText;
};

} // namespace

// Deliberate: not guarded against a second call, which builds everything anew and leaks what was there.
void initialize() {
    Quillon::fastDeposit = Quillon::findFastDeposit();
    enumerations([]<class T>(Velmora::of<T>, const char*) {
        T::initialize();
        return true;
    });
    __protocol = new Protocol;
    registry.clearTable();
    messages([]<class T>(Velmora::of<T>, const char* name) {
        registry.add<T>(name, __protocol);
        return true;
    });
    messages([]<class T>(Velmora::of<T>, const char*) {
        _index[T::INDEX] = T::ID;
        return true;
    });
    initialized = true;
}

// The tables of the enumerations stay filled.
void finalize() {
    registry.release();
    delete __protocol;
    __protocol = nullptr;
}
)~",
             {{"modulo", fmt::to_string(definition.slots)},
              {"entries", fmt::to_string(definition.entries)},
              {"messages", fmt::to_string(definition.messages.size())},
              {"name", definition.name},
              {"definition", definitionArray(definition)},
              {"definitionText", literal(definition.definitionText)},
              {"signature", definition.signature},
              {"API", definition.signatureAPI},
              {"storage", definition.signatureStorage}});
}

} // namespace

std::string emitSource(const Definition& definition) {
    Text text(definition);
    text.add(R"(#include "$folder/$stem.h"

#include <iostream> // brings the initialiser of the standard streams into the module, ahead of the registry
#include <iterator>

#include "Backend/Velmora/MsgRegistry.h"
#include "Backend/Velmora/TypeLists.h"
#include "Backend/Velmora/operations/CheckBounds.h"
#include "Backend/Velmora/operations/Compare.h"
#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Encode.h"
#include "Backend/Velmora/operations/Print.h"
#include "$folder/AsciiWriter.h"
#include "$folder/$stem.fields.h"
)");
    text.open();
    text.add(R"(
// Deliberately empty. Decoding is tolerant: a byte without a name is kept, so that peers may know more enumerators.
void validateEnum(const std::string&, bool) {}

// Enumerations.
)");
    for (const Enumeration& enumeration : definition.enumerations) addEnumeration(text, enumeration);
    text.add("\n// Records and messages.\n");
    for (const Composite* type : composites(definition)) addComposite(text, *type);
    addFacts(text, definition);
    addModule(text, definition);
    return text.close();
}

} // namespace qlgen
