// qlproto dissector: the packet-analyser plug-in, a Lua script. Its tables are made from reflection, all else is fixed.
#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

#include <fmt/format.h>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/dissector/Runtime.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

/// The protocol as Lua tables, in the form that dissector/runtime.lua states.
class Tables {
  public:
    Tables() {
        for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) gather(*message.type);
    }

    std::string text() {
        line("local protocol = {{ name = \"{}\", prefix = \"{}\", keys = \"{}\" }}\n", thisTool.name,
             thisTool.filterPrefix, thisTool.keyFields);
        line("local enumerations = {{");
        for (const Inspect::EnumerationInfo* enumeration : _enumerations) {
            line("    {} = {{", enumeration->name);
            // One byte travels, whatever the enumerator's value.
            for (const Inspect::EnumeratorInfo& it : enumeration->enumerators)
                line("        [{}] = \"{}\",", it.value & 0xFF, it.name);
            line("    }},");
        }
        line("}}\n\nlocal records = {{");
        for (const Inspect::TypeInfo* record : _records) {
            line("    {} = {{ size = {},", record->name, record->minimalSize);
            fields(*record);
        }
        line("}}\n\nlocal messages = {{");
        for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) {
            line("    {{ id = 0x{:04X}, name = \"{}\",", message.id, message.type->name);
            fields(*message.type);
        }
        line("}}\n");
        return std::move(_text);
    }

  private:
    /// The records and enumerations that a type uses, each once.
    void gather(const Inspect::TypeInfo& type) {
        for (const Inspect::FieldInfo& field : type.fields) {
            const Inspect::ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
            if (value.enumeration != nullptr) addOnce(_enumerations, value.enumeration);
            if (value.record != nullptr && addOnce(_records, value.record)) gather(*value.record);
        }
    }

    template <class T>
    static bool addOnce(std::vector<T>& all, T one) {
        if (std::find(all.begin(), all.end(), one) != all.end()) return false;
        all.push_back(one);
        return true;
    }

    void fields(const Inspect::TypeInfo& type) {
        for (const Inspect::FieldInfo& field : type.fields)
            line("        {{ \"{}\", \"{}\"{} }},", field.name, Inspect::type_text(field.value),
                 field.isSecret ? ", secret = true" : "");
        line("    }},");
    }

    template <class... Args>
    void line(fmt::format_string<Args...> format, Args&&... args) {
        fmt::format_to(std::back_inserter(_text), format, std::forward<Args>(args)...);
        _text += '\n';
    }

    std::vector<const Inspect::EnumerationInfo*> _enumerations;
    std::vector<const Inspect::TypeInfo*> _records;
    std::string _text;
};

/// A row of the framing as a Lua table, without its end.
std::string framingRow(const Capture::Framing::Row& row) {
    static constexpr const char* kinds[] = {"constant", "length", "id", "sequence", "count", "skip"};
    std::string text = fmt::format("{{ before = {}, after = {}, lengthEnd = {}, around = {}", row.before, row.after,
                                   row.lengthEnd, row.lengthOf(0));
    for (const Capture::Framing::Field& it : row.fields)
        if (!it.isAfterBody)
            text += fmt::format(", {{ kind = \"{}\", at = {}, size = {}, isHighFirst = {}, value = {} }}",
                                kinds[static_cast<int>(it.kind)], it.at, it.size, it.isHighFirst, it.value);
    return text;
}

std::string framingTables(const NetworkChoice& network) {
    if (!network.isMade()) return "local framing, ports = nil, {}\n\n";
    const Capture::Framing framing = network.read();
    std::string text = "local framing = " + framingRow(framing.frame());
    if (framing.message() != nullptr) text += ", messages = " + framingRow(*framing.message()) + " }";
    return text + fmt::format(" }}\nlocal ports = {{ {} }}\n\n", fmt::join(network.ports, ", "));
}

int dissector(const std::string& path, const NetworkChoice& network) {
    Capture::writeText(
        fmt::format("-- Dissector of {} for link type USER0 (147). Made by {} dissector. Do not edit.\n\n", title(),
                    thisTool.program)
            + Tables().text() + framingTables(network) + std::string(DISSECTOR_RUNTIME),
        path);
    return EXIT_FINE;
}

} // namespace

void addDissector(CLI::App& app, Commands& commands) {
    const auto output = std::make_shared<std::string>("-");
    const auto network = std::make_shared<NetworkChoice>();
    CLI::App* const command =
        app.add_subcommand("dissector", "Write a packet-analyser plug-in, a Lua script for Wireshark and tshark");
    command->add_option("-o,--output", *output, "The script to write; - is standard output")
        ->capture_default_str()
        ->type_name(FILE_VALUE);
    addNetworkChoice(*command, *network);
    addExamples(
        *command,
        "With a framing it also shows messages in TCP streams and UDP datagrams of the ports; without ports, where "
        "the\nanalyser is told to decode them as such.",
        {"$tool dissector -o $tool.lua", "$tool dissector --framing frames --port 9001 -o $tool.lua",
         "$tool dissector -o $tool.lua && tshark -X lua_script:$tool.lua -r session.pcap -c 20",
         "$tool dissector | grep -c secret"});
    commands.push_back({command, [output, network] { return dissector(*output, *network); }});
}

} // namespace qlproto
