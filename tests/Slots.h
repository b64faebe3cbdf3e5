// The order of virtual operations, which code built apart from this module relies on.
#pragma once

#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

/// The slot of a virtual operation: the platform's C++ ABI stores one plus its byte offset in the virtual table.
template <class Operation>
std::size_t slot(Operation operation) {
    std::size_t bits;
    std::memcpy(&bits, &operation, sizeof(bits));
    return (bits - 1) / sizeof(void*);
}

/// Expects these operations, all there are, one after the other from slot 2 on: after the two forms of the destructor.
template <class... Operations>
void expectSlotsFromTwo(Operations... operations) {
    std::size_t expected = 2;
    for (const std::size_t actual : {slot(operations)...}) EXPECT_EQ(actual, expected++);
}
