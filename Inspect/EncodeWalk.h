// The walk behind encode_checked(): looks for what cannot travel, measures, writes.
#pragma once

#include "Inspect/Checked.h"
#include "Inspect/SizeWalk.h"

namespace Inspect::detail {

using namespace Velmora;

/// Looks for what cannot travel: its refusal, with the path in `path`, which begins with a dot.
template <class T>
Refusal find_unencodable(const T& value, std::string& path) {
    if constexpr (String<T>) {
        if (value.size() > MAX_TEXT) return Refusal::textTooLong;
    } else if constexpr (Vector<T>) {
        if (value.size() > MAX_COUNT) return Refusal::tooManyElements;
        if constexpr (holdsStorage<typename T::value_type>())
            for (size_t i = 0; i < value.size(); ++i) {
                if (const Refusal refusal = find_unencodable(value[i], path); refusal != Refusal::none) {
                    path.insert(0, '[' + std::to_string(i) + ']');
                    return refusal;
                }
            }
    } else {
        Refusal refusal = Refusal::none;
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            if constexpr (holdsStorage<MemberType<decltype(member)>>()) {
                refusal = find_unencodable(value.*member, path);
                if (refusal != Refusal::none) path.insert(0, std::string(".") + name);
            }
            return refusal == Refusal::none;
        });
        return refusal;
    }
    return Refusal::none;
}

template <class T>
Encoded encode(const void* message, char* begin, char* end) {
    const T& value = *static_cast<const T*>(message);
    Encoded result;
    result.refusal = find_unencodable(value, result.field);
    if (!result) {
        result.field.erase(0, 1);
        return result;
    }
    result.size = encoded_size(value);
    if (result.size > static_cast<size_t>(end - begin)) {
        result.refusal = Refusal::tooSmall;
        return result;
    }
    FastCodec codec(begin, end);
    value.write(codec);
    return result;
}

} // namespace Inspect::detail
