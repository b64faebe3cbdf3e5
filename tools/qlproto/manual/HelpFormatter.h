// --help of the tool and its commands: the parser's own, with values named as in the manual page.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include "tools/qlproto/manual/CommandTree.h"

namespace qlproto {

class HelpFormatter : public CLI::Formatter {
  public:
    /// What follows the option's name.
    std::string make_option_opts(const CLI::Option* option) const override {
        std::string text;
        if (const std::string placeholder = placeholderOf(*option); !placeholder.empty()) text += ' ' + placeholder;
        if (!option->get_default_str().empty()) text += '=' + option->get_default_str();
        if (option->get_expected_max() == CLI::detail::expected_max_vector_size) text += " ...";
        if (option->get_required()) text += " REQUIRED";
        for (const CLI::Option* other : option->get_excludes()) text += ", not with " + other->get_name();
        return text;
    }
};

} // namespace qlproto
