#include "tools/qlproto/trading/Identifiers.h"

#include <array>
#include <concepts>

#include "generated/QLProtocol/QLProtocol.traits.h"
#include "tools/qlproto/trading/Messages.h"

namespace qlproto {

namespace {

using namespace Velmora;

/// Of the fields of T, in their order.
template <class T>
constexpr auto ID_KINDS = [] {
    constexpr auto notes = fieldNotes(of<T>{});
    std::array<IdKind, notes.size()> kinds{};
    for (std::size_t i = 0; i < notes.size(); ++i) kinds[i] = idKindOf(notes[i].identifies);
    return kinds;
}();

template <class T>
consteval bool holdsIdentifiers() {
    if constexpr (Vector<T>) {
        return holdsIdentifiers<typename T::value_type>();
    } else if constexpr (Composite<T>) {
        std::size_t i = 0;
        return !fields(of<T>{}, [&](const char*, auto member, auto) {
            return ID_KINDS<T>[i++] == IdKind::none && !holdsIdentifiers<MemberType<decltype(member)>>();
        });
    } else {
        return false;
    }
}

template <class T>
void collect(const T& value, std::vector<Identifier>& to) {
    if constexpr (!holdsIdentifiers<T>()) {
        return;
    } else if constexpr (Vector<T>) {
        for (std::size_t i = 0; i < value.size(); ++i) collect(value[i], to);
    } else {
        std::size_t i = 0;
        fields(of<T>{}, [&](const char*, auto member, auto) {
            using Field = MemberType<decltype(member)>;
            const IdKind kind = ID_KINDS<T>[i++];
            if constexpr (Composite<Field> || Vector<Field>) {
                collect(value.*member, to);
            } else if constexpr (String<Field> || std::integral<Field>) {
                if (kind == IdKind::none) return true;
                if constexpr (String<Field>) {
                    if (!(value.*member).empty())
                        to.push_back({kind, true, {(value.*member).c_str(), (value.*member).size()}});
                } else if (value.*member != 0) {
                    to.push_back({kind, false, std::to_string(value.*member)});
                }
            }
            return true;
        });
    }
}

using Collect = void (*)(const void* message, std::vector<Identifier>& to);
constexpr std::array<Collect, MESSAGE_COUNT> COLLECTORS = [] {
    std::array<Collect, MESSAGE_COUNT> table{};
    Quillon::messages([&]<class T>(of<T>, const char*) {
        table[T::INDEX] = [](const void* message, std::vector<Identifier>& to) {
            collect(*static_cast<const T*>(message), to);
        };
        return true;
    });
    return table;
}();

} // namespace

void collectIdentifiers(short index, const void* message, std::vector<Identifier>& to) {
    COLLECTORS[static_cast<std::size_t>(index)](message, to);
}

} // namespace qlproto
