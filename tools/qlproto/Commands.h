// The commands of the tool. Each returns an exit code and throws what Errors.h names.
#pragma once

#include <cstdint>
#include <string>

namespace qlproto {

struct GenerateOptions {
    uint64_t messages = 10000;
    uint64_t seed = 1;
    std::string output; ///< "-" is standard output
};

/// Writes a made-up trading session as a capture.
int generate(const GenerateOptions& options);

/// Prints the messages of a capture, one a line: time, name, fields.
int decode(const std::string& capture);

/// Decodes, encodes again and compares every message of a capture.
int roundtrip(const std::string& capture);

} // namespace qlproto
