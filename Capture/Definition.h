// Which definition a capture was made with: a line of JSON. It stands in the comment of a pcapng file, and beside a pcap
// file, whose container has no place for it, as CAPTURE.definition.
//
//     {"protocol": "Quillon", "version": 1, "wire": "3cb1...", "names": "c622...", "size": 123456}
//
//   wire, names   signatures that change when bodies or names do
//   size          beside the capture only, its bytes: what was said of another file under that name is not said of this one
#pragma once

#include <string>

namespace Capture {

struct Definition {
    std::string protocol;
    int version = 0;
    std::string wire;
    std::string names;
};

/// Says of a capture that is complete what it was made with. Throws IoError.
void noteDefinition(const std::string& capture, const Definition& definition);

/// The line of JSON, without its end, that a capture holds itself.
std::string textOf(const Definition& definition);

/// What is to be told to those who read a capture that holds such a text, by their `own` definition, on one line. Empty if
/// it was made with that, or if the text is empty.
std::string differenceOfDefinition(const std::string& capture, const std::string& text, const Definition& own);

/// What is to be told to those who read the capture by their `own` definition, on one line. Empty if it was made with
/// that, or nothing is said beside it. What a stranger put there is read up to a few kilobytes, and never waited for.
std::string differenceOfDefinition(const std::string& capture, const Definition& own);

} // namespace Capture
