// AsciiWriter.h, AsciiWriter.cpp: one function per record and message that writes its fields as text.
//
//     void handle(const KeyValuePair& value);
//     void handle(const LogMessage& value) override;
//
//     void AsciiWriter::handle(const LogMessage& value) { _printer.render(value); }
#include "generator/Emit.h"

namespace qlgen {

std::string emitWriterHeader(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// The fields of a value as text, "name=value name=value ...", without a frame. The operators << of the types put the
// frame around it; see Backend/Velmora/operations/Render.h for the rules of the text.
#pragma once

#include "Backend/Velmora/operations/Render.h"
#include "$folder/MsgHandler.h"
)");
    text.open();
    text.add(R"(
class AsciiWriter : public MsgHandler {
  public:
    /// Writes through `codec`, which must outlive the writer, into its stream; the caller leaves enough room.
    /// `multiline`: one field a line instead of all on one; `indent`: blanks in front of each of these lines.
    AsciiWriter(Velmora::TextCodec<FastOStream>& codec, bool multiline, int indent);
    ~AsciiWriter() override;

)");
    for (const Composite& record : definition.records)
        text.add("    void handle(const $T& value);\n", {{"T", record.name}});
    text.add("\n");
    for (const Composite& message : definition.messages)
        text.add("    void handle(const $T& value) override;\n", {{"T", message.name}});
    text.add(R"(
  private:
    Velmora::FieldPrinter _printer;
};
)");
    return text.close();
}

std::string emitWriterSource(const Definition& definition) {
    Text text(definition);
    text.add(R"(#include "$folder/AsciiWriter.h"

#include "$folder/$stem.fields.h"
)");
    text.open();
    text.add(R"(
AsciiWriter::AsciiWriter(Velmora::TextCodec<FastOStream>& codec, bool multiline, int indent)
    : _printer(codec, multiline, indent) {}
AsciiWriter::~AsciiWriter() = default;

)");
    for (const Composite* type : composites(definition))
        text.add("void AsciiWriter::handle(const $T& value) { _printer.render(value); }\n", {{"T", type->name}});
    return text.close();
}

} // namespace qlgen
