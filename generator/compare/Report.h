// What a comparison tells people and programs, and the file that lists what is accepted all the same.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generator/compare/Compare.h"

namespace qlgen::compare {

/// What was compared, as named on the command line.
struct Sides {
    std::string oldFile;
    std::string newFile;
};

/// A line of the file of exceptions: "field-retyped MDEntry.source: all readers were updated in release 12". The place
/// may be *, for all. Empty lines and lines that begin with # say nothing.
struct Exception {
    std::string rule;
    std::string place;
    std::string reason;
    size_t line;
};

/// Reads the file's text; `file` is its name in error texts. Throws DefinitionError with a line per error.
std::vector<Exception> parseExceptions(std::string_view text, const std::string& file);

/// Notes the reasons with the differences that they accept. Returns the exceptions that accept nothing.
std::vector<Exception> accept(Comparison& comparison, const std::vector<Exception>& exceptions);

/// Paragraphs for people.
std::string asText(const Comparison& comparison, Level level);

/// One JSON object, documented in docs/evolution.md.
std::string asJson(const Comparison& comparison, Level level, const Sides& sides);

/// The rules as a table in Markdown.
std::string rulesTable();

} // namespace qlgen::compare
