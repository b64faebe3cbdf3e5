// Test vectors for implementers in other languages: good bodies with what they mean, hostile ones with what is wrong.
// corpus/README.md explains them for their readers.
#pragma once

#include <string>
#include <vector>

#include "Inspect/Reflection.h"
#include "Inspect/Verify.h"

namespace qlproto::corpus {

/// What a reader has to find.
struct Expected {
    Inspect::Fault fault;
    std::size_t offset;
    std::string path;
};

/// A body with one thing wrong. What is expected follows from what was done to a good body, not from asking the
/// verifier.
struct Hostile {
    std::string name;
    std::string body;
    Expected strict;
    bool isTakenWhole; ///< whether it decodes nevertheless when only its end has to be right; else it fails likewise
};

/// One of every kind for which the message has a field, at its first and at its last such field.
std::vector<Hostile> hostileVectors(const Inspect::TypeInfo& type, const std::string& goodBody);

/// All vectors of a message as lines of JSON. The protocol must be initialised.
std::string vectorLines(const Inspect::MessageInfo& message);

} // namespace qlproto::corpus
