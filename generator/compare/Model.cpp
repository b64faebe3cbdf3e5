#include "generator/compare/Model.h"

#include <algorithm>

#include <fmt/format.h>

namespace qlgen::compare {
namespace {

template <class Range>
auto named(const Range& range, const std::string& name) -> decltype(&*range.begin()) {
    const auto found = std::ranges::find_if(range, [&](const auto& it) { return it.name == name; });
    return found == range.end() ? nullptr : &*found;
}

Type resolve(const FieldType& field, const Model& model) {
    Type type;
    type.written = field.name + (field.isVector ? "[]" : "");
    type.isVector = field.isVector;
    type.logical = field.logical;
    if (field.isEnumeration()) type.enumeration = &model.enumerations[field.index];
    if (field.isRecord) type.record = &model.records[field.index];
    return type;
}

CompositeView resolve(const Composite& composite, const Model& model) {
    CompositeView view{composite.name, composite.doc, composite.id, {}, composite.deprecated};
    for (const Field& field : composite.fields)
        view.fields.push_back(
            {field.name, field.doc, field.name, resolve(field.type, model), field.isSecret, field.deprecated});
    return view;
}

} // namespace

const Enumerator* EnumerationView::find(const std::string& enumerator) const { return named(enumerators, enumerator); }

const FieldView* CompositeView::find(const std::string& field) const { return named(fields, field); }

Model::Model(const Definition& definition)
    : name(definition.name),
      sources(fmt::format("{} in {}/{}", definition.cppNamespace, definition.folder, definition.stem)) {
    for (const Enumeration& it : definition.enumerations)
        enumerations.push_back({it.name, it.name, it.enumerators, it.deprecated});
    for (const Composite& it : definition.records) records.push_back(resolve(it, *this)); // refers to earlier ones only
    for (const Composite& it : definition.messages) messages.push_back(resolve(it, *this));
}

const EnumerationView* Model::enumeration(const std::string& type) const { return named(enumerations, type); }
const CompositeView* Model::record(const std::string& type) const { return named(records, type); }
const CompositeView* Model::message(const std::string& type) const { return named(messages, type); }
const CompositeView* Model::message(uint16_t id) const {
    const auto found = std::ranges::find(messages, id, &CompositeView::id);
    return found == messages.end() ? nullptr : &*found;
}

} // namespace qlgen::compare
