// The commands that show what the protocol consists of, held against the definition file they do not read.
#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/Names.h"

namespace {

using nlohmann::json;
using nlohmann::ordered_json;

using Attributes = std::map<std::string, std::string>;

/// The attributes of one element of the definition, which has one element a line.
Attributes attributes(const std::string& line) {
    Attributes found;
    size_t opening;
    for (size_t at = 0; (opening = line.find("=\"", at)) != line.npos;) {
        const size_t name = line.rfind(' ', opening) + 1, closing = line.find('"', opening + 2);
        found[line.substr(name, opening - name)] = line.substr(opening + 2, closing - opening - 2);
        at = closing;
    }
    return found;
}

/// What the definition says for people: the attribute, or that of the same name in the meaning of the name.
void note(ordered_json& into, const char* name, Attributes& given, Attributes& meaning) {
    if (!given[name].empty() || !meaning[name].empty()) into[name] = given[name].empty() ? meaning[name] : given[name];
}

/// The definition in the form of `qlproto schema`, without encodings.
ordered_json definition() {
    std::map<std::string, Attributes> meanings;
    Attributes none;
    ordered_json all = {{"enumerations", json::array()}, {"records", json::array()}, {"messages", json::array()}};
    ordered_json* current = nullptr;
    std::ifstream file(QL_ROOT "/protocol/QLProtocol.xml");
    for (std::string line; std::getline(file, line);) {
        const size_t start = line.find('<');
        if (start == std::string::npos) continue;
        const auto is = [&](const char* element) { return line.compare(start, strlen(element), element) == 0; };
        auto attribute = attributes(line);
        const auto begin = [&](const char* list, const char* members) {
            all[list].push_back({{"name", attribute["name"]}});
            current = &all[list].back();
            if (attribute.contains("id")) (*current)["id"] = std::stoi(attribute["id"], nullptr, 0);
            for (const char* name : {"doc", "deprecated"}) note(*current, name, attribute, none);
            (*current)[members] = json::array();
        };
        if (is("<enumeration ")) begin("enumerations", "values");
        if (is("<record ")) begin("records", "fields");
        if (is("<message ")) begin("messages", "fields");
        if (is("<meaning ")) meanings[attribute["name"]] = attribute;
        if (is("<enumerator ")) {
            ordered_json value = {{"name", attribute["name"]}, {"value", std::stoi(attribute["value"])}};
            for (const char* name : {"doc", "deprecated"}) note(value, name, attribute, none);
            (*current)["values"].push_back(std::move(value));
        }
        if (is("<field ")) {
            ordered_json field = {{"name", attribute["name"]}, {"type", attribute["type"]}};
            if (attribute["secret"] == "true") field["secret"] = true;
            for (const char* name : {"doc", "deprecated", "identifies", "station"})
                note(field, name, attribute, meanings[attribute["name"]]);
            (*current)["fields"].push_back(std::move(field));
        }
    }
    return all;
}

TEST(Schema, IsTheDefinition) {
    const ToolFolder folder;
    const ToolFolder::Result result = folder.run("qlproto schema");
    ASSERT_EQ(result.exitCode, 0) << result.err;
    ordered_json schema = ordered_json::parse(result.out);
    const std::map<std::string, std::string> encodings = {
        {"bool", "bool"},           {"int8", "byte"},           {"int16", "zigzag-varint"},
        {"int32", "zigzag-varint"}, {"int64", "zigzag-varint"}, {"price", "special-varint"},
        {"string", "string"},       {"padding", "padding"},     {"cryptstring", "crypt-string"}};
    std::set<std::string> records;
    for (const ordered_json& record : schema["records"]) records.insert(record["name"]);
    const auto expectEncoding = [&](const ordered_json& value) {
        const std::string type = value["type"];
        const auto known = encodings.find(type);
        EXPECT_EQ(value["encoding"], known != encodings.end() ? known->second
                                     : type.ends_with("[]")   ? "vector"
                                     : records.contains(type) ? "record"
                                                              : "enum-byte")
            << type;
    };
    for (const char* list : {"records", "messages"})
        for (ordered_json& type : schema[list])
            for (ordered_json& field : type["fields"]) {
                expectEncoding(field);
                field.erase("encoding");
                const std::string spelled = field["type"];
                EXPECT_EQ(field.contains("element"), spelled.ends_with("[]"));
                if (!field.contains("element")) continue;
                EXPECT_EQ(field["element"]["type"], spelled.substr(0, spelled.size() - 2));
                expectEncoding(field["element"]);
                field.erase("element");
            }
    const ordered_json expected = definition();
    ASSERT_FALSE(expected["messages"].empty());
    for (const char* list : {"enumerations", "records", "messages"}) EXPECT_EQ(schema[list], expected[list]) << list;

    const ordered_json messages = ordered_json::parse(folder.run("qlproto messages --json").out);
    ASSERT_EQ(messages.size(), expected["messages"].size());
    for (size_t i = 0; i < messages.size(); ++i) {
        EXPECT_EQ(messages[i]["name"], expected["messages"][i]["name"]);
        EXPECT_EQ(messages[i]["id"], expected["messages"][i]["id"]);
        EXPECT_EQ(messages[i]["fields"], expected["messages"][i]["fields"].size());
    }
}

TEST(Catalogue, ShowsTypesLevelByLevelAndEnumerators) {
    const ToolFolder folder;
    const std::string order = folder.run("qlproto describe 61673").out;
    EXPECT_EQ(order, folder.run("qlproto describe SubmitOrderMessage").out);
    // The record in the message, the vector in the record, the string in the vector's elements.
    size_t at = 0;
    for (const char* line :
         {"SubmitOrderMessage: message 61673 (0xF0E9), 5 fields, 20 or more bytes on the wire",
          "\n  contents          SubmitOrder     16 or more  its fields\n",
          "\n    price           price           1..10       special varint\n",
          "\n    parameters      KeyValuePair[]  1 or more   count, elements\n",
          "\n      key           string          1..65538    length", "\n\n  field             meaning\n"}) {
        const size_t found = order.find(line, at);
        ASSERT_NE(found, order.npos) << line << " is not in: " << order;
        at = found;
    }
    EXPECT_NE(folder.run("qlproto describe ClientConnectMessage").out.find("secret\n"), std::string::npos);
    EXPECT_EQ(folder.run("qlproto enum Side").out,
              "value  name\n    1  BID\n    2  OFR\n    3  BOTH\n    4  MIDPOINT\n");
    EXPECT_NE(folder.run("qlproto enum Request").out.find("53327  SECURITYINFO  travels as its low byte, 79"),
              std::string::npos);
    const std::string table = folder.run("qlproto messages").out;
    EXPECT_EQ(linesOf(table).size(), 1 + Inspect::all_messages().size()) << "a header, and a line each";
    EXPECT_NE(table.find("\n53284  0xD024  TimerMessage "), std::string::npos) << table;
}

TEST(Catalogue, TablesComeAsCsvAndJsonToo) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto generate --messages 2000 --seed 7 -o a.pcap").exitCode, 0);
    const struct {
        const char* command;
        const char* header; ///< of CSV
        json row;           ///< one of those of JSON has these members
    } cases[] = {
        {"messages", "id,hex,message,fields,bytes", {{"id", 53284}, {"hex", "0xD024"}, {"name", "TimerMessage"}}},
        {"describe SubmitOrderMessage",
         "field,type,bytes,encoding",
         {{"field", "contents.parameters[].key"}, {"type", "string"}}},
        {"enum Side", "value,name,note", {{"value", 4}, {"name", "MIDPOINT"}, {"note", nullptr}}},
        {"enum", "enumeration", {{"enumeration", "Side"}}},
    };
    for (const auto& it : cases) {
        const std::string command = std::string("qlproto ") + it.command;
        const auto csv = linesOf(folder.run(command + " --csv").out);
        EXPECT_EQ(csv[0], it.header);
        const json rows = json::parse(folder.run(command + " --format json").out);
        EXPECT_EQ(rows.size(), csv.size() - 1) << command;
        EXPECT_TRUE(std::ranges::any_of(rows, [&](json row) {
            const json whole = row;
            row.update(it.row);
            return row == whole;
        })) << command;
    }
    const auto steps = linesOf(folder.run("qlproto trace a.pcap --user 11 --csv --time utc").out);
    const auto lines = linesOf(folder.run("qlproto trace a.pcap --user 11 --json").out);
    ASSERT_EQ(steps.size(), lines.size() + 1);
    EXPECT_EQ(steps[0], "packet,time,gap,message,fields");
    const json second = json::parse(lines[1]);
    EXPECT_TRUE(steps[2].starts_with(second["packet"].dump() + ',')) << steps[2];
    EXPECT_NE(steps[2].find("Z," + second["gap"].dump() + ',' + second["message"].get<std::string>()), steps[2].npos);
}

TEST(Catalogue, SuggestsTheNearestNames) {
    const struct {
        const char* command;
        const char* complaint;
    } cases[] = {
        {"describe submitorder", "no message or record is named 'submitorder'; did you mean SubmitOrder or "
                                 "SubmitOrderMessage?"},
        {"describe TimrMessage", "did you mean TimerMessage"},
        {"describe Xyzzyqwertyuiop", "no message or record is named 'Xyzzyqwertyuiop'\n"},
        {"describe 3", "no message has the identifier 3\n"},
        {"describe 0xD024z", "no message or record is named '0xD024z'"},
        {"enum Sid", "did you mean Side?"},
    };
    const ToolFolder folder;
    for (const auto& it : cases) {
        const ToolFolder::Result result = folder.run(std::string("qlproto ") + it.command);
        EXPECT_EQ(result.exitCode, 2) << it.command;
        EXPECT_EQ(result.out, "") << it.command;
        EXPECT_NE(result.err.find(it.complaint), std::string::npos) << it.command << ": " << result.err;
    }
    for (const char* name : {"TimerMessage", "53284", "0xD024", "0xd024"})
        EXPECT_EQ(qlproto::findMessage(name)->type->name, "TimerMessage") << name;
    for (const char* name : {"", "0x", "timermessage", "118820", "-1", " 53284"})
        EXPECT_EQ(qlproto::findMessage(name), nullptr) << name;
}

} // namespace
