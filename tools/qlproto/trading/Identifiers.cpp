#include "tools/qlproto/trading/Identifiers.h"

#include <array>
#include <concepts>

#include "tools/qlproto/trading/Messages.h"

namespace qlproto {

namespace {

using namespace Velmora;

constexpr IdKind kindOf(std::string_view field) {
    for (const IdField& it : ID_FIELDS)
        if (it.field == field) return it.kind;
    return IdKind::none;
}

template <class T>
consteval bool holdsIdentifiers() {
    if constexpr (Vector<T>)
        return holdsIdentifiers<typename T::value_type>();
    else if constexpr (Composite<T>)
        return !fields(of<T>{}, [](const char* name, auto member, auto) {
            return kindOf(name) == IdKind::none && !holdsIdentifiers<MemberType<decltype(member)>>();
        });
    else
        return false;
}

template <class T>
void collect(const T& value, std::vector<Identifier>& to) {
    if constexpr (!holdsIdentifiers<T>()) {
        return;
    } else if constexpr (Vector<T>) {
        for (std::size_t i = 0; i < value.size(); ++i) collect(value[i], to);
    } else {
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            using Field = MemberType<decltype(member)>;
            if constexpr (Composite<Field> || Vector<Field>) {
                collect(value.*member, to);
            } else if constexpr (String<Field> || std::integral<Field>) {
                const IdKind kind = kindOf(name);
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
