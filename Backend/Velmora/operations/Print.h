// The frame of a printed value: "<Type ", the text of its fields, ">".
#pragma once

#include <ostream>

#include "Backend/Common/FastOStream.h"
#include "Backend/Velmora/CuttingCodec.h"
#include "Backend/Velmora/TextCodec.h"
#include "Backend/Velmora/operations/TextSize.h"

namespace Velmora {

/// Into a fixed-buffer stream. The caller leaves enough room; no NUL is appended. When the writer throws, the stream
/// keeps what was written so far.
template <class Writer, class T>
Quillon::FastOStream& print(Quillon::FastOStream& os, const char* opening, const T& value) {
    os << opening;
    TextCodec<Quillon::FastOStream> codec(os);
    Writer writer(codec, false, 0);
    writer.Writer::handle(value);
    return os << '>';
}

/// Into a standard stream, by way of a scratch buffer on the stack, so that no field goes through the machinery of
/// standard streams and nothing is inserted before the text is complete. The text ends at its first NUL. Fields of more
/// than 65,535 characters are cut: the text then ends with "...[cut]" and without the ">".
template <class Writer, class T>
std::ostream& print(std::ostream& os, const char* opening, const T& value) {
    Quillon::StaticOStream<65536> scratch;
    bool isCut = false;
    if (maxFieldsTextSize(&value) < scratch.capacity()) { // with the NUL
        TextCodec<Quillon::FastOStream> codec(scratch);
        Writer writer(codec, false, 0);
        writer.Writer::handle(value);
    } else {
        CuttingCodec codec(scratch);
        Writer writer(codec, false, 0);
        writer.Writer::handle(value);
        isCut = codec.isCut();
    }
    // Three insertions: a field width pads the opening only.
    return os << opening << scratch.ends() << (isCut ? "" : ">");
}

} // namespace Velmora
