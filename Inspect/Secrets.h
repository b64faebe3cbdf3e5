// Which fields the protocol definition marks as secret: not to be shown in logs. All that a secret record holds is secret
// too: who renders types hides the field as a whole, and who walks tables asks FieldInfo::is_secret_in().
#pragma once

#include "Backend/Velmora/FieldList.h"

namespace Inspect {

/// Whether that member of T is marked. Types without a secret have no list.
template <class T, class Member>
constexpr bool is_secret(Member member) {
    if constexpr (requires { secrets(Velmora::of<T>{}, [](auto) { return true; }); }) {
        return !secrets(Velmora::of<T>{}, [&](auto secret) {
            if constexpr (std::is_same_v<decltype(secret), Member>)
                return secret != member;
            else
                return true;
        });
    } else {
        return false;
    }
}

} // namespace Inspect
