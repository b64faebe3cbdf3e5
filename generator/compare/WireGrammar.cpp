#include "generator/compare/WireGrammar.h"

namespace qlgen::compare {
namespace {

constexpr LogicalType ENUMERATOR = {"", "", "", ValueKind::unsignedInteger, WireForm::byte, 8};
constexpr LogicalType COUNT = {"", "", "", ValueKind::unsignedInteger, WireForm::varint, 16};

class Flattener {
  public:
    explicit Flattener(const Edit* edit) : _edit(edit) {}

    /// `isLast`: a reader that takes missing last fields as zero looks for them among the fields of this composite.
    void add(const CompositeView& given, const std::string& path, const std::string& key, bool isLast, Sequence& out) {
        const bool isEdited = _edit != nullptr && _edit->composite == &given;
        const CompositeView& composite = isEdited ? _edit->editedComposite : given;
        for (const FieldView& field : composite.fields) {
            const size_t first = out.size();
            const bool isLastField = isLast && &field == &composite.fields.back();
            addField(field, joined(path, field.name), joined(key, field.identity), isLastField, out);
            if (isLast && out.size() > first) out[first].mayEndBefore = true;
        }
    }

  private:
    static std::string joined(const std::string& path, const std::string& name) {
        return path.empty() || name.empty() ? path + name : path + '.' + name;
    }

    void addField(const FieldView& field, const std::string& path, const std::string& key, bool isLast, Sequence& out) {
        if (!field.type.isVector) return addValue(field.type, path, key, isLast, out);
        Item vector = item(COUNT, path, key + "[]");
        vector.isVector = true;
        addValue(field.type, path + "[]", key, false, vector.element);
        out.push_back(std::move(vector));
    }

    void addValue(const Type& type, const std::string& path, const std::string& key, bool isLast, Sequence& out) {
        if (type.record != nullptr) return add(*type.record, path, key, isLast, out);
        Item leaf = item(type.logical != nullptr ? *type.logical : ENUMERATOR, path, key);
        leaf.enumeration = _edit != nullptr && type.enumeration != nullptr && _edit->enumeration == type.enumeration
                               ? &_edit->editedEnumeration
                               : type.enumeration;
        out.push_back(std::move(leaf));
    }

    static Item item(const LogicalType& type, const std::string& path, const std::string& key) {
        return {&type, path, key, nullptr, false, {}, false};
    }

    const Edit* const _edit;
};

} // namespace

Framing Item::written() const {
    if (isVector) return Framing::count;
    switch (type->form) {
    case WireForm::boolean:
    case WireForm::byte:
        return Framing::byte;
    case WireForm::zigzag:
    case WireForm::varint:
    case WireForm::special:
        return Framing::varint;
    case WireForm::fixed:
        return Framing::fixed;
    case WireForm::text:
        return Framing::text;
    case WireForm::fixedText:
    case WireForm::padding:
        break;
    }
    return Framing::fixedText;
}

Framing Item::read() const { return isPadding() ? Framing::text : written(); }

Sequence flatten(const CompositeView& message, const Edit* edit) {
    Sequence sequence;
    Flattener(edit).add(message, "", "", true, sequence);
    return sequence;
}

} // namespace qlgen::compare
