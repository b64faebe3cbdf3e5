#include "generator/compare/Report.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace qlgen::compare {
namespace {

using Json = nlohmann::ordered_json;

std::string hex(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(c));
    return text;
}

using Values = std::vector<std::pair<std::string, std::string>>;

std::string asText(const Values& values) {
    std::string text;
    for (const auto& [path, value] : values) text += fmt::format("{}{} = {}", text.empty() ? "" : ", ", path, value);
    return text.empty() ? "nothing but zeros" : text;
}

Json asJson(const Values& values) {
    Json json = Json::object();
    for (const auto& [path, value] : values) json[path] = value;
    return json;
}

/// "refused", "refused (read by rolling readers)".
std::string verdictText(const Outcome& outcome) {
    std::string text = toText(outcome.verdict);
    if (outcome.rolling == Verdict::silent && outcome.verdict != Verdict::silent)
        text += ", silent for rolling readers";
    if (outcome.rolling == Verdict::same && outcome.verdict != Verdict::same) text += ", same for rolling readers";
    if (!outcome.isProved) text += " as far as was searched";
    return text;
}

void addDirection(std::string& text, const char* name, const Direction& direction) {
    text += fmt::format("  {}: {}\n", name, verdictText(direction.outcome));
    if (!direction.outcome.witness) return;
    const Witness& witness = *direction.outcome.witness;
    text += fmt::format("    {} {}\n", direction.message, hex(witness.body));
    text += fmt::format("    written: {}\n    read:    {}\n", asText(witness.written), asText(witness.read));
}

Json asJson(const Direction& direction) {
    const Outcome& outcome = direction.outcome;
    Json json = {
        {"verdict", toText(outcome.verdict)}, {"rolling", toText(outcome.rolling)}, {"proved", outcome.isProved}};
    json["witness"] = nullptr;
    if (outcome.witness)
        json["witness"] = {{"message", direction.message},
                           {"id", direction.id},
                           {"body", hex(outcome.witness->body)},
                           {"reader", outcome.witness->isRolling ? "rolling" : "whole"},
                           {"written", asJson(outcome.witness->written)},
                           {"read", asJson(outcome.witness->read)}};
    return json;
}

std::string trimmed(std::string_view text) {
    const size_t from = text.find_first_not_of(" \t\r");
    if (from == text.npos) return "";
    return std::string(text.substr(from, text.find_last_not_of(" \t\r") - from + 1));
}

} // namespace

std::vector<Exception> parseExceptions(std::string_view text, const std::string& file) {
    std::vector<Exception> exceptions;
    std::vector<std::string> errors;
    for (size_t line = 1; !text.empty(); ++line) {
        const std::string content = trimmed(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.size(), text.find('\n') == text.npos ? text.size() : text.find('\n') + 1));
        if (content.empty() || content.front() == '#') continue;
        const size_t colon = content.find(':'), blank = content.find_first_of(" \t");
        Exception it{content.substr(0, std::min(blank, colon)), "", "", line};
        if (blank < colon && colon != content.npos) {
            it.place = trimmed(std::string_view(content).substr(blank, colon - blank));
            it.reason = trimmed(std::string_view(content).substr(colon + 1));
        }
        if (std::ranges::find(rules(), it.rule, &RuleInfo::name) == rules().end())
            errors.push_back(fmt::format("{}:{}: there is no rule '{}'", file, line, it.rule));
        else if (it.place.empty() || it.reason.empty())
            errors.push_back(fmt::format("{}:{}: not RULE PLACE: REASON", file, line));
        exceptions.push_back(std::move(it));
    }
    if (!errors.empty()) throw DefinitionError(fmt::format("{}", fmt::join(errors, "\n")));
    return exceptions;
}

std::vector<Exception> accept(Comparison& comparison, const std::vector<Exception>& exceptions) {
    std::vector<Exception> unused;
    for (const Exception& exception : exceptions) {
        bool isUsed = false;
        for (Difference& it : comparison.differences) {
            if (info(it.rule).name != exception.rule || (exception.place != "*" && it.place != exception.place))
                continue;
            it.exception = exception.reason;
            isUsed = true;
        }
        if (!isUsed) unused.push_back(exception);
    }
    return unused;
}

std::string asText(const Comparison& comparison, Level level) {
    std::string text;
    size_t incompatible = 0;
    for (const Difference& it : comparison.differences) {
        const bool isFine = isCompatible(it, level);
        incompatible += isFine ? 0 : 1;
        text += fmt::format("{} {}{}{}\n", info(it.rule).name, it.place, it.details.empty() ? "" : ": ", it.details);
        if (!it.exception.empty()) text += fmt::format("  accepted: {}\n", it.exception);
        if (it.oldToNew.outcome.verdict != Verdict::same || it.newToOld.outcome.verdict != Verdict::same) {
            addDirection(text, "old to new", it.oldToNew);
            addDirection(text, "new to old", it.newToOld);
        }
        if (!isFine) text += fmt::format("  not compatible from level {} on\n", toText(*it.breaks));
    }
    return text
           + fmt::format("{} difference{}, {} not compatible at level {}\n", comparison.differences.size(),
                         comparison.differences.size() == 1 ? "" : "s", incompatible, toText(level));
}

std::string asJson(const Comparison& comparison, Level level, const Sides& sides) {
    Json json = {{"old", sides.oldFile}, {"new", sides.newFile}, {"level", toText(level)}};
    json["compatible"] = comparison.isCompatible(level);
    json["differences"] = Json::array();
    for (const Difference& it : comparison.differences) {
        Json difference = {{"rule", info(it.rule).name}, {"place", it.place}, {"details", it.details}};
        difference["breaks"] = it.breaks ? Json(toText(*it.breaks)) : Json();
        difference["compatible"] = isCompatible(it, level);
        difference["exception"] = it.exception.empty() ? Json() : Json(it.exception);
        difference["messages"] = it.messages;
        difference["oldToNew"] = asJson(it.oldToNew);
        difference["newToOld"] = asJson(it.newToOld);
        json["differences"].push_back(std::move(difference));
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string rulesTable() {
    std::string table = "| rule | what changed | bytes at the other side | else breaks |\n|---|---|---|---|\n";
    for (const RuleInfo& it : rules())
        table +=
            fmt::format("| `{}` | {} | {} | {} |\n", it.name, it.change, it.bytes, it.breaks ? toText(*it.breaks) : "");
    return table;
}

} // namespace qlgen::compare
