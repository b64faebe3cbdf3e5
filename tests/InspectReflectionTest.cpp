// The tables by identifier, held against the lists they are made from, and the way from an offset to a field.
#include "Inspect/Reflection.h"

#include <gtest/gtest.h>

#include "tests/Bodies.h"

namespace {

using namespace Inspect;
using Velmora::of;

/// The bytes of a type's fields as the tables tell them: what a tool that knows only the tables would write for zeros.
size_t minimalByTables(const TypeInfo& type) {
    size_t size = 0;
    for (const FieldInfo& field : type.fields) {
        const size_t own = field.value.kind == Kind::record ? minimalByTables(*field.value.record) : 1;
        EXPECT_EQ(field.minimalSize, own) << field.name;
        size += own;
    }
    return size;
}

TEST(Reflection, EveryMessageIsDescribedFieldByField) {
    size_t index = 0;
    forEveryMessage([&]<class T>(of<T>, const char* name) {
        const TypeInfo* const type = reflect(T::ID);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(all_messages()[index].id, T::ID);
        EXPECT_EQ(all_messages()[index++].type, type);
        EXPECT_EQ(type->name, name);
        EXPECT_EQ(type->memorySize, sizeof(T));
        EXPECT_EQ(type->minimalSize, minimalByTables(*type));
        size_t field = 0;
        fields(of<T>{}, [&](const char* fieldName, auto, auto) {
            EXPECT_EQ(type->fields[field].name, fieldName);
            EXPECT_EQ(type->fields[field].isSecret,
                      std::string_view(name) == "ClientConnectMessage" && std::string_view(fieldName) == "password");
            return ++field, true;
        });
        EXPECT_EQ(field, type->fields.size());
    });
    EXPECT_EQ(index, all_messages().size());
    EXPECT_EQ(reflect(0xF209), nullptr);
    EXPECT_EQ(reflect(0xF208 - 350), nullptr) << "shares a slot of the table";
}

class Path : public Module {};

TEST_F(Path, EveryByteBelongsToTheValueThatHoldsIt) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            const Body body = sampleBody<T>(filling, 4);
            Guarded guarded;
            const std::string_view held = guarded.hold(body.bytes);
            for (const Span& span : body.spans)
                for (size_t offset = span.begin; offset < std::min(span.end, span.begin + 12); ++offset)
                    EXPECT_EQ(path_at(*reflect(T::ID), held, offset), span.path) << offset;
            EXPECT_EQ(path_at(*reflect(T::ID), held, held.size()), "");
            // Where the body ends too early, the byte that is missing belongs to the value that would begin there.
            for (const Span& span : body.spans)
                EXPECT_EQ(path_at(*reflect(T::ID), held.substr(0, span.begin), span.begin), span.path);
        }
    });
}

} // namespace
