// The generator: what it makes of a definition, what it rejects and how it says so, and what it leaves on disk.
#include "generator/Definition.h"
#include "generator/Emit.h"
#include "generator/Output.h"
#include "generator/Signature.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "tests/Folder.h"

namespace {

namespace fs = std::filesystem;
using namespace qlgen;

// Plain and backed types, every kind of vector, names that recur. Cases below replace parts of it.
const std::string sound = R"(<protocol name="Test" version="1" slots="350"
  signature="00000000000000000000000000000001" signatureAPI="00000000000000000000000000000002"
  signatureStorage="00000000000000000000000000000003">
  <meanings>
    <meaning name="side" doc="a side"/>
  </meanings>
  <enumeration name="Side" doc="A side.">
    <enumerator name="OFR" value="2"/>
    <enumerator name="BID" value="1"/>
  </enumeration>
  <record name="Pair" doc="Plain.">
    <field name="side" type="Side"/>
    <field name="size" type="price" doc="a size"/>
  </record>
  <record name="Book" doc="Backed.">
    <field name="numbers" type="int32[]" doc="numbers"/>
    <field name="pairs" type="Pair[]" doc="pairs"/>
    <field name="best" type="Pair" doc="a pair"/>
  </record>
  <message name="BookMessage" id="0x0010" doc="Books.">
    <field name="book" type="Book" doc="a book"/>
    <field name="books" type="Book[]" doc="books"/>
    <field name="names" type="string[]" doc="names"/>
    <field name="secret" type="cryptstring" secret="true" doc="a secret"/>
  </message>
  <message name="PingMessage" id="17" doc="A ping.">
    <field name="side" type="Side" doc="another side"/>
  </message>
</protocol>
)";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return at == text.npos ? text : text.replace(at, from.size(), to);
}

/// The error text for a definition named "d.xml", or "" if it is sound.
std::string errorsOf(const std::string& xml) {
    try {
        parseDefinition(xml, "d.xml");
    } catch (const DefinitionError& e) {
        return e.what();
    }
    return "";
}

TEST(Definition, FieldsGetTypeEncodingAndStorageFromTheirLogicalType) {
    const Definition definition = parseDefinition(sound, "d.xml");
    struct Expected {
        const char* cppType;
        const char* encoding;
        bool holdsStorage;
        const char* doc;
    };
    const std::map<std::string, Expected> expected = {
        {"Pair.side", {"Side::Type", "plain", false, "a side"}},
        {"Pair.size", {"int64_t", "price", false, "a size"}},
        {"Book.numbers", {"bufvector<int>", "plain", true, "numbers"}},
        {"Book.pairs", {"bufvector<Pair>", "plain", true, "pairs"}},
        {"Book.best", {"Pair", "plain", false, "a pair"}},
        {"BookMessage.book", {"Book", "plain", true, "a book"}},
        {"BookMessage.books", {"bufvectox<Book>", "plain", true, "books"}},
        {"BookMessage.names", {"bufvectox<bufstring>", "plain", true, "names"}},
        {"BookMessage.secret", {"bufstring", "crypt", true, "a secret"}},
        {"PingMessage.side", {"Side::Type", "plain", false, "another side"}},
    };
    size_t seen = 0;
    for (const Composite* type : composites(definition)) {
        for (const Field& field : type->fields) {
            const std::string name = type->name + "." + field.name;
            SCOPED_TRACE(name);
            ASSERT_TRUE(expected.contains(name));
            const Expected& want = expected.at(name);
            EXPECT_EQ(field.cppType, want.cppType);
            EXPECT_EQ(field.encoding, want.encoding);
            EXPECT_EQ(field.holdsStorage, want.holdsStorage);
            EXPECT_EQ(field.doc, want.doc);
            EXPECT_EQ(field.isSecret, name == "BookMessage.secret");
            ++seen;
        }
    }
    EXPECT_EQ(seen, expected.size());
    EXPECT_EQ(definition.enumerations.at(0).maxValue(), 2);
    EXPECT_EQ(definition.enumerations.at(0).enumerators.at(0).name, "OFR") << "declaration order, not value order";
    EXPECT_EQ(definition.messages.at(0).id, 16);
    EXPECT_EQ(definition.messages.at(1).id, 17);
}

/// Whether the schema takes each of these definitions.
std::vector<bool> takenBySchema(const std::vector<std::string>& definitions) {
    const Folder folder;
    std::string command = "xmllint --noout --schema '" QL_ROOT "/protocol/QLProtocol.xsd'";
    for (size_t i = 0; i < definitions.size(); ++i) {
        std::ofstream(folder.path(std::to_string(i)), std::ios::binary) << definitions[i];
        command += " " + folder.path(std::to_string(i));
    }
    const std::string verdicts = folder.run(command).err;
    std::vector<bool> taken;
    for (size_t i = 0; i < definitions.size(); ++i)
        taken.push_back(verdicts.find(folder.path(std::to_string(i)) + " validates") != verdicts.npos);
    return taken;
}

// One fault each. The whole error text is compared, so that a fault has no second, misleading report. What is wrong
// with the form of a definition, the schema sees as well; what goes across elements, it lets pass.
TEST(Definition, EachFaultIsReportedOnceWithItsLineAndFaultsOfFormBySchemaToo) {
    enum Fault { none, form, across };
    struct Case {
        Fault fault;
        const char* from;
        const char* to;
        const char* error;
    };
    static const std::string longName(129, 'N');
    static const std::string atMost = std::string(998, 'x') + "\xC3\xA9.", beyond = atMost + ".";
    static const std::string named = "name=\"" + longName + "\"",
                             tooLong = "9: 'NNNNNNNNNNNNNNNN...' has more than 128 characters";
    const Case cases[] = {
        {form, "</message>", "</massage>", "25: not well-formed XML: Start-end tags mismatch"},
        {form, "<protocol", "<protokoll", "29: not well-formed XML: Start-end tags mismatch"},
        {form, "A side.", "A & B.", "7: not well-formed XML: '&' begins no reference that is known"},
        {form, "A side.", "A &#0;.", "7: not well-formed XML: '&' begins no reference that is known"},
        {form, "A side.", "A < B.", "7: not well-formed XML: '<' in an attribute"},
        {form, "A side.", "A \xE9.", "7: not well-formed XML: a byte that is not UTF-8"},
        {form, "A side.", "A \xED\xA0\x80.", "7: not well-formed XML: character U+D800 is none of XML"},
        {form, "A side.", "A \x01.", "7: not well-formed XML: character U+0001 is none of XML"},
        {form, "<meanings>", "<!-- a -- b --><meanings>", "4: not well-formed XML: '--' in a comment"},
        {form, "</protocol>", "</protocol>more", "29: not well-formed XML: text outside the root element"},
        {none, "A side.", "A &amp; B &#x263A; \xE2\x98\xBA \\d.", ""},
        {form, "<meaning ", "<word/><meaning ", "5: <meanings> takes no element <word>"},
        {form, "<meanings>", "<meanings>what", "4: <meanings> takes no text"},
        {form, "doc=\"A side.\"", "doc=\"A side.\" dok=\"\"",
         "7: <enumeration> has no attribute 'dok'\nd.xml:7: attribute 'dok' is empty"},
        {form, " doc=\"A side.\"", "", "7: <enumeration> lacks the attribute 'doc'"},
        {form, "doc=\"A side.\"", "doc=\"A\" doc=\"B\"", "7: attribute 'doc' is given twice"},
        {form, "A side.", "A&#10;side.", "7: the doc must be one line and not end with a backslash"},
        {form, "A side.", "A side.\\", "7: the doc must be one line and not end with a backslash"},
        {form, "A side.",
         "A \xE2\x80\xAE"
         "side.",
         "7: the doc holds a character that turns the direction of text"},
        {none, "A side.", atMost.c_str(), ""},
        {form, "A side.", beyond.c_str(), "7: the doc has more than 1000 characters"},
        {form, "version=\"1\"", "version=\"one\"", "1: version 'one' is not a number"},
        {form, "version=\"1\"", "version=\"+1\"", "1: version '+1' is not a number"},
        {none, "version=\"1\"", "version=\"0x00FfFf\"", ""},
        {form, "=\"00000000000000000000000000000003", "=\"3",
         "1: signatureStorage '3' is not 32 hexadecimal digits in lower case"},
        {form, "</meanings>", "</meanings><meanings/>", "6: a <meanings> cannot stand after a <meanings>"},
        {form, "</protocol>",
         "<record name=\"Late\" doc=\"x\"><field name=\"side\" type=\"Side\"/></record></protocol>",
         "29: a <record> cannot stand after a <message>"},
        // the module
        {form, "name=\"Test\"", "name=\"Te st\"",
         "1: 'Te st' is not a name: words of letters and digits, with '_' between them"},
        {form, "version", "namespace=\"A::\" version",
         "1: 'A::' is not a namespace: words of letters and digits, with :: between them"},
        {none, "version", "namespace=\"Acme::Chat2\" folder=\"made/Acme-1.0\" stem=\"acme\" version", ""},
        {across, "version", "namespace=\"Pair\" version", "11: 'Pair' is the name of the namespace"},
        {across, "version", "namespace=\"std\" version", "1: the namespace 'std' belongs to others"},
        {across, "version", "namespace=\"acme::Velmora\" version", "1: the namespace 'Velmora' belongs to others"},
        {across, "version", "namespace=\"time\" version", "1: 'time' is a name of the C library"},
        {across, "version", "namespace=\"acme::namespace\" version", "1: 'namespace' is a word of C++"},
        {form, "version", "folder=\"a/../b\" version",
         "1: 'a/../b' is not a folder: letters, digits, '_', '-' and '.', with '/' between names"},
        {form, "version", "folder=\"/a\" version",
         "1: '/a' is not a folder: letters, digits, '_', '-' and '.', with '/' between names"},
        {across, "version", "stem=\"asciiWriter\" version",
         "1: the file name 'asciiWriter' is taken by the generated code"},
        {form, "slots=\"350\"", "slots=\"0\"", "1: slots 0 is not in 1..65535"},
        {across, "slots=\"350\"", "slots=\"1\"",
         "26: messages 'BookMessage' and 'PingMessage' share slot 0 of the direct table (id modulo 1)"},
        {across, "version", "macros=\"BID NULL\" version", "1: macros: nothing has the name 'NULL'"},
        // names
        {form, "name=\"BID\"", "name=\"1BID\"",
         "9: '1BID' is not an enumerator's name: words of capital letters and digits, with '_' between them"},
        {form, "name=\"BID\"", "name=\"Bid\"",
         "9: 'Bid' is not an enumerator's name: words of capital letters and digits, with '_' between them"},
        {form, "name=\"BID\"", named.c_str(), tooLong.c_str()},
        {across, "name=\"BID\"", "name=\"QL_ASSERT\"", "9: the name 'QL_ASSERT' is taken by the generated code"},
        {form, "\"size\"", "\"_size\"",
         "13: '_size' is not a name: words of letters and digits, with '_' between them"},
        {form, "\"size\"", "\"size__1\"",
         "13: 'size__1' is not a name: words of letters and digits, with '_' between them"},
        {form, "\"size\"", "\"size_\"",
         "13: 'size_' is not a name: words of letters and digits, with '_' between them"},
        {across, "\"size\"", "\"xor\"", "13: 'xor' is a word of C++"},
        {across, "\"size\"", "\"INDEX\"", "13: the name 'INDEX' is taken by the generated code"},
        {across, "\"size\"", "\"Book\"", "13: 'Book' is the name of a type"},
        {form, "\"PingMessage\"", "\"pingMessage\"",
         "26: 'pingMessage' is not a type's name: a capital letter, then letters and digits"},
        {form, "\"PingMessage\"", "\"int32\"",
         "26: 'int32' is not a type's name: a capital letter, then letters and digits"},
        {across, "\"PingMessage\"", "\"FastCodec\"", "26: the name 'FastCodec' is taken by the generated code"},
        {across, "\"PingMessage\"", "\"QLProtocolTraits\"",
         "26: the name 'QLProtocolTraits' is taken by the generated code"},
        {across, "\"PingMessage\"", "\"SIDE\"", "26: types 'Side' and 'SIDE' differ in nothing but case"},
        // flags and marks
        {form, "secret=\"true\"", "secret=\"yes\"", "24: secret 'yes' is neither true nor false"},
        {form, "secret=\"true\"", "secret=\"\"", "24: attribute 'secret' is empty"},
        {form, "secret=\"true\"", "deprecated=\"\\\"",
         "24: the deprecated must be one line and not end with a backslash"},
        {form, "secret=\"true\"", "identifies=\"an order\"",
         "24: 'an order' is not a name: words of letters and digits, with '_' between them"},
        {none, "secret=\"true\"", "identifies=\"order\" deprecated=\"a &quot;b&quot;\"", ""},
        {across, "type=\"price\"", "type=\"price\" identifies=\"order\"",
         "13: 'size' cannot be an identifier: those are integers and strings"},
        {across, "type=\"price\"", "type=\"int64[]\" identifies=\"order\"",
         "13: 'size' cannot be an identifier: those are integers and strings"},
        {across, "type=\"price\"", "type=\"int32\" station=\"exchange\"",
         "13: 'size' cannot be the time at a station: those are integers of 64 bits"},
        {across, "doc=\"a side\"", "doc=\"a side\" station=\"exchange\"",
         "12: 'side' cannot be the time at a station: those are integers of 64 bits\n"
         "d.xml:27: 'side' cannot be the time at a station: those are integers of 64 bits"},
        // things given twice
        {form, "\"PingMessage\"", "\"Side\"", "26: type 'Side' is declared twice"},
        {form, "\"size\"", "\"side\"", "13: field 'side' is declared twice in 'Pair'"},
        {form, "name=\"BID\"", "name=\"OFR\"", "9: enumerator 'OFR' is declared twice in 'Side'"},
        {across, "value=\"1\"", "value=\"0x2\"", "9: enumerators 'OFR' and 'BID' travel as the same byte"},
        {across, "id=\"17\"", "id=\"16\"", "26: messages 'BookMessage' and 'PingMessage' have the same id"},
        {form, "<meaning ", "<meaning name=\"side\" doc=\"b\"/>\n<meaning ", "6: meaning 'side' is given twice"},
        // numbers
        {form, "value=\"1\"", "value=\"-1\"", "9: value -1 is not in 0..65535"},
        {form, "value=\"1\"", "value=\"65536\"", "9: value 65536 is not in 0..65535"},
        {form, "value=\"1\"", "value=\"99999999999999999999\"", "9: value '99999999999999999999' is not a number"},
        {across, "value=\"1\"", "value=\"256\"",
         "9: value 256 does not travel: an enumerator is one byte, unless it is marked as cut"},
        {none, "value=\"1\"", "value=\"256\" cut=\"true\"", ""},
        {across, "value=\"1\"", "value=\"258\" cut=\"true\"", "9: enumerators 'OFR' and 'BID' travel as the same byte"},
        {across, "value=\"1\"", "value=\"1\" cut=\"true\"", "9: value 1 is not cut: it fits a byte"},
        {form, "id=\"17\"", "id=\"17x\"", "26: id '17x' is not a number"},
        {form, "id=\"17\"", "id=\"0x\"", "26: id '0x' is not a number"},
        {form, "id=\"17\"", "id=\"0x10000\"", "26: id 0x10000 is not in 0..65535"},
        {across, "id=\"17\"", "id=\"366\"",
         "26: messages 'BookMessage' and 'PingMessage' share slot 16 of the direct table (id modulo 350)"},
        // types
        {across, "type=\"Side\"", "type=\"Sid\"", "12: unknown type 'Sid'"},
        {form, "type=\"Side\"", "type=\"\"", "12: attribute 'type' is empty"},
        {form, "type=\"Side\"", "type=\"int24\"", "12: unknown type 'int24'"},
        {across, "type=\"Pair\"", "type=\"PingMessage\"", "18: message 'PingMessage' cannot be the type of a field"},
        {across, "type=\"price\"", "type=\"Book[]\"", "11: records contain each other: Pair -> Book -> Pair"},
        {across, "type=\"price\"", "type=\"Pair\"", "11: records contain each other: Pair -> Pair"},
        {form, "int32[]", "padding[]", "16: there are no vectors of 'padding'"},
        {form, "int32[]", "int32[][]", "16: unknown type 'int32[]'"},
        // what is missing or left over
        {across, " doc=\"a size\"", "", "13: 'size' has neither a meaning nor a doc"},
        {across, "type=\"Side\"", "type=\"Side\" doc=\"x\"", "5: no field uses the meaning 'side'"},
        {form, "    <enumerator name=\"OFR\" value=\"2\"/>\n    <enumerator name=\"BID\" value=\"1\"/>\n", "",
         "7: an enumeration needs an enumerator"},
        {form, "    <field name=\"side\" type=\"Side\" doc=\"another side\"/>\n", "", "26: a message needs a field"},
    };
    ASSERT_EQ(errorsOf(sound), "");
    std::vector<std::string> definitions = {sound};
    for (const Case& c : cases) definitions.push_back(replaced(sound, c.from, c.to));
    const std::vector<bool> taken = takenBySchema(definitions);
    EXPECT_TRUE(taken[0]);
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(cases[i].to);
        EXPECT_EQ(errorsOf(definitions[i + 1]), cases[i].fault == none ? "" : std::string("d.xml:") + cases[i].error);
        EXPECT_EQ(taken[i + 1], cases[i].fault != form);
    }
}

// Every logical type, alone and as a vector: both agree on which there are.
TEST(Definition, SchemaKnowsTheLogicalTypes) {
    std::vector<std::string> definitions;
    for (const LogicalType& type : logicalTypes())
        for (const char* suffix : {"", "[]"})
            definitions.push_back(
                replaced(sound, "type=\"price\"", "type=\"" + std::string(type.name) + suffix + "\""));
    const std::vector<bool> taken = takenBySchema(definitions);
    for (size_t i = 0; i < definitions.size(); ++i) {
        SCOPED_TRACE(logicalTypes()[i / 2].name);
        EXPECT_EQ(taken[i], errorsOf(definitions[i]) == "");
        EXPECT_TRUE(taken[i] || (i % 2 != 0 && logicalTypes()[i / 2].name == "padding"));
    }
}

TEST(Definition, WhatIsAbsentIsDerived) {
    EXPECT_EQ(signatureOf("a"), "d228cb696f1a8caf78912b704e4a8964") << "FNV-1a";
    const std::string bare = std::regex_replace(sound, std::regex("(slots|signature[A-Za-z]*)=\"[^\"]*\""), "");
    const Definition derived = parseDefinition(bare, "d.xml");
    EXPECT_EQ(derived.slots, 2u);
    EXPECT_EQ(derived.entries, 2u);
    EXPECT_EQ(derived.cppNamespace + " " + derived.folder + " " + derived.stem,
              "Quillon generated/QLProtocol QLProtocol");
    EXPECT_EQ(parseDefinition(replaced(bare, "id=\"17\"", "id=\"22\""), "d.xml").slots, 4u)
        << "16 and 22: not 2, not 3";

    // Names and wire forms are signed apart, and what is neither is not signed at all.
    struct Case {
        const char* from;
        const char* to;
        bool isNamed, travels;
    };
    const Case cases[] = {
        {"A side.", "Another side.", false, false},
        {"secret=\"true\"", "deprecated=\"no\" identifies=\"order\"", false, false},
        {"\"size\"", "\"extent\"", true, false},
        {"\"BID\"", "\"ASK\"", true, false},
        {"value=\"1\"", "value=\"3\"", true, false},
        {"type=\"price\"", "type=\"int64\"", true, true},
        {"type=\"Book[]\"", "type=\"Book\"", true, true},
        {"type=\"cryptstring\"", "type=\"cryptblob\"", true, false},
        {"id=\"17\"", "id=\"18\"", true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.to);
        const Definition changed = parseDefinition(replaced(bare, c.from, c.to), "d.xml");
        EXPECT_EQ(changed.signatureAPI != derived.signatureAPI, c.isNamed);
        EXPECT_EQ(changed.signatureStorage != derived.signatureStorage, c.travels);
        EXPECT_EQ(changed.signature != derived.signature, c.isNamed || c.travels);
    }
}

TEST(Definition, SizesAreBounded) {
    const auto with = [](const std::string& types) {
        return errorsOf(replaced(sound, "  <message", types + "  <message"));
    };
    const auto record = [](const std::string& name, const std::string& fields) {
        return "<record name=\"" + name + "\" doc=\"x\">" + fields + "</record>\n";
    };
    const auto field = [](const std::string& name, const std::string& type) {
        return "<field name=\"" + name + "\" type=\"" + type + "\" doc=\"x\"/>";
    };
    std::string doubling = record("R0", field("a", "bool") + field("b", "bool")),
                deep = record("V0", field("a", "bool"));
    for (int i = 1; i <= 12; ++i) {
        const std::string before = "R" + std::to_string(i - 1);
        doubling += record("R" + std::to_string(i), field("a", before) + field("b", before));
    }
    EXPECT_EQ(with(doubling), "d.xml:32: 'R12' holds 8192 values with all that it embeds; 4096 are the most");
    for (int i = 1; i <= 8; ++i)
        deep += record("V" + std::to_string(i), field("a", "V" + std::to_string(i - 1) + "[]"));
    EXPECT_EQ(with(deep), "d.xml:28: 'V8' nests 17 deep; 16 is the most");
    std::string fields, records;
    for (int i = 0; i < 513; ++i) fields += "\n" + field("f" + std::to_string(i), "bool");
    EXPECT_EQ(with(record("Long", fields)), "d.xml:533: <record> takes at most 512 elements <field>");
    for (int i = 0; i < 1023; ++i) records += record("N" + std::to_string(i), field("a", "bool"));
    EXPECT_EQ(with(records), "d.xml:1042: <protocol> takes at most 1024 elements <record>");
}

TEST(Definition, RecordsMustBeDeclaredBeforeTheyAreUsed) {
    const std::string later =
        "  <record name=\"Later\" doc=\"x\">\n    <field name=\"side\" type=\"Side\"/>\n  </record>\n";
    const std::string xml = replaced(sound, "  <message", later + "  <message");
    EXPECT_EQ(errorsOf(xml), "");
    EXPECT_EQ(errorsOf(replaced(xml, "int32[]", "Later[]")), "d.xml:16: record 'Later' is used before it is declared");
}

TEST(Definition, AllFaultsAreReportedInOneRun) {
    const std::string xml = replaced(replaced(sound, "id=\"17\"", "id=\"x\""), "int32[]", "Nothing");
    EXPECT_EQ(errorsOf(xml), "d.xml:16: unknown type 'Nothing'\nd.xml:26: id 'x' is not a number");
}

TEST(Definition, DocumentsWithoutAProtocolAreRejected) {
    EXPECT_EQ(errorsOf(""), "d.xml:1: not well-formed XML: No document element found");
    EXPECT_EQ(errorsOf("<a/>"), "d.xml:1: the root element must be <protocol>");
    EXPECT_EQ(errorsOf(sound + "<a/>"), "d.xml:30: not well-formed XML: there is a second root element");
}

TEST(Emit, SecretsHaveAListWhereThereAreSome) {
    const auto fieldsOf = [](const std::string& xml) {
        for (const File& file : emit(parseDefinition(xml, "d.xml")))
            if (file.name == "QLProtocol.fields.h") return file.text;
        return std::string();
    };
    const std::string list = "bool secrets(Velmora::of<BookMessage>, Visit&& visit) {\n"
                             "    return visit(&BookMessage::secret);\n}\n";
    EXPECT_NE(fieldsOf(sound).find(list), std::string::npos);
    const std::string two = replaced(sound, "type=\"Book[]\"", "type=\"Book[]\" secret=\"true\"");
    EXPECT_NE(fieldsOf(two).find("visit(&BookMessage::books)\n           && visit(&BookMessage::secret);"),
              std::string::npos);
    EXPECT_EQ(fieldsOf(replaced(sound, "secret=\"true\"", "secret=\"false\"")).find("bool secrets("),
              std::string::npos);
}

TEST(Emit, CompilersTellHostsWhatIsDeprecated) {
    std::string xml = sound;
    for (const char* name : {"name=\"size\"", "name=\"BID\"", "name=\"Side\"", "name=\"PingMessage\""})
        xml = replaced(xml, name, name + std::string(" deprecated=\"no &quot;more&quot;\""));
    const std::string header = emitHeader(parseDefinition(xml, "d.xml"));
    for (const char* part :
         {"[[deprecated(\"no \\\"more\\\"\")]] int64_t size{};", "BID [[deprecated(\"no \\\"more\\\"\")]] = 1,",
          "struct [[deprecated(\"no \\\"more\\\"\")]] Side {",
          "struct [[deprecated(\"no \\\"more\\\"\")]] PingMessage {"})
        EXPECT_NE(header.find(part), std::string::npos) << part;
}

TEST(Emit, HolesThatNothingFillsAreFaults) {
    const Definition definition = parseDefinition(sound, "d.xml");
    Text text(definition);
    text.add("$a-$b.", {{"a", "$b"}, {"b", "2"}});
    EXPECT_THROW(text.add("$other"), std::logic_error);
    EXPECT_NE(text.close().find("\n$b-2."), std::string::npos);
}

// ------- the committed output and the program

class Generator : public testing::Test {
  protected:
    void SetUp() override { write(definition(), sound); }

    fs::path definition() const { return folder.path("d.xml"); }
    fs::path output() const { return folder.path("made"); }

    static void write(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

    /// Runs the program; stores all it prints. Returns its exit status.
    int run(const std::string& arguments) {
        const Folder::Result result = folder.run("'" QL_GENERATOR "' " + arguments);
        printed = result.out + result.err;
        return result.exitCode;
    }
    int generate() { return run(definition().string() + " " + output().string()); }
    int check() { return run("--check " + definition().string() + " " + output().string()); }

    /// Name and content of every file in the output directory.
    std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> files;
        if (fs::exists(output()))
            for (const auto& entry : fs::directory_iterator(output()))
                files[entry.path().filename()] = readFile(entry.path());
        return files;
    }

    const Folder folder;
    std::string printed;
};

TEST_F(Generator, CommittedOutputIsCurrentAndDeterministic) {
    const fs::path root = QL_ROOT;
    const fs::path source = root / "protocol/QLProtocol.xml";
    const Definition protocol = parseDefinition(readFile(source), source);
    const std::vector<File> files = emit(protocol);
    EXPECT_EQ(outdated(files, root / "generated/QLProtocol"), std::vector<std::string>());
    ASSERT_EQ(files.size(), 9u);

    // Another parse of the same text by another process, whose addresses and hashes differ.
    ASSERT_EQ(run(source.string() + " " + output().string()), 0) << printed;
    EXPECT_EQ(outdated(files, output()), std::vector<std::string>());
    EXPECT_EQ(contents().size(), files.size()) << "no temporary file stays behind";
}

TEST_F(Generator, FaultyDefinitionLeavesTheOutputAlone) {
    write(definition(), replaced(sound, "int32[]", "Nothing"));
    EXPECT_EQ(generate(), 2);
    EXPECT_EQ(printed, definition().string() + ":16: unknown type 'Nothing'\n");
    EXPECT_FALSE(fs::exists(output()));

    write(definition(), sound);
    ASSERT_EQ(generate(), 0) << printed;
    const auto before = contents();
    write(definition(), replaced(sound, "id=\"17\"", "id=\"16\""));
    EXPECT_EQ(generate(), 2);
    EXPECT_EQ(check(), 2);
    EXPECT_EQ(contents(), before);
}

TEST_F(Generator, FilesThatCannotBeWrittenLeaveTheOthersAlone) {
    ASSERT_EQ(generate(), 0) << printed;
    const auto before = contents();
    // A directory in the way of the last temporary file; an unwritable directory would not stop root.
    fs::create_directory(output() / "Catalogue.md.tmp");
    write(definition(), replaced(sound, "PingMessage", "PongMessage"));
    EXPECT_EQ(generate(), 2);
    EXPECT_NE(printed.find("cannot write"), printed.npos) << printed;
    fs::remove(output() / "Catalogue.md.tmp");
    EXPECT_EQ(contents(), before);

    EXPECT_EQ(run(folder.path("none.xml") + " " + output().string()), 2);
    EXPECT_NE(printed.find("cannot read"), printed.npos) << printed;
}

TEST_F(Generator, CheckNamesWhatIsNotCurrentAndWritesNothing) {
    EXPECT_EQ(check(), 1) << "nothing is there yet";
    EXPECT_FALSE(fs::exists(output()));
    ASSERT_EQ(generate(), 0) << printed;
    EXPECT_EQ(check(), 0) << printed;
    EXPECT_EQ(printed, "");

    write(output() / "MsgHandler.h", contents().at("MsgHandler.h") + " ");
    fs::remove(output() / "QLProtocol.cpp");
    const auto before = contents();
    EXPECT_EQ(check(), 1);
    const std::string out = output().string();
    EXPECT_EQ(printed, out + "/QLProtocol.cpp is not current\n" + out + "/MsgHandler.h is not current\n");
    EXPECT_EQ(contents(), before);
}

TEST_F(Generator, FilesThatAreCurrentKeepTheirTime) {
    ASSERT_EQ(generate(), 0) << printed;
    const fs::file_time_type longAgo = fs::file_time_type::clock::now() - std::chrono::hours(24);
    for (const auto& [name, text] : contents()) fs::last_write_time(output() / name, longAgo);
    write(definition(), replaced(sound, "value=\"1\"", "value=\"3\""));
    ASSERT_EQ(generate(), 0) << printed;
    // The value stands in two of them, and in a signature.
    EXPECT_EQ(printed, "QLProtocol.h written\nQLProtocol.traits.h written\nCatalogue.md written\n");
    for (const auto& [name, text] : contents())
        EXPECT_EQ(fs::last_write_time(output() / name) == longAgo, printed.find(name + " written") == printed.npos)
            << name;
}

TEST_F(Generator, ManualPageNamesWhatTheHelpNames) {
    const auto optionsIn = [](const std::string& text) {
        static const std::regex option("--[a-z]+");
        return std::set<std::string>(std::sregex_token_iterator(text.begin(), text.end(), option), {});
    };
    std::string page = readFile(QL_ROOT "/generator/qlgen.1"), help;
    page = std::regex_replace(page, std::regex("\\\\-"), "-");
    for (const char* command : {"--help", "compare --help"}) {
        ASSERT_EQ(run(command), 0);
        help += printed;
    }
    EXPECT_EQ(optionsIn(page), optionsIn(help));
    for (const char* word : {"DEFINITION", "OUTPUT_DIR", "compare", "OLD", "NEW", "wire", "json", "source", "text"})
        EXPECT_TRUE(page.find(word) != page.npos && help.find(word) != help.npos) << word;
    EXPECT_EQ(folder.run("mandoc -T lint -W warning '" QL_ROOT "/generator/qlgen.1' | grep -v 'missing date'").out, "");
}

TEST_F(Generator, WrongUsageIsRejected) {
    EXPECT_GT(run(""), 100);
    EXPECT_GT(run("--chek a b"), 100);
}

} // namespace
