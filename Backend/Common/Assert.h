// Assertions that stay active in every build.
//
// A value outside its block or a use before initialisation is a broken invariant that must end the process in
// production too, so these assertions ignore NDEBUG. The report is that of the C library: expression, function and
// source.
#pragma once

// Declared here as well because <assert.h> hides it when NDEBUG is set. The declaration is the C library's own, down to
// the form of the attribute, which a second declaration must not change.
extern "C" void __assert_fail(const char* expression, const char* file, unsigned int line,
                              const char* function) noexcept __attribute__((noreturn));

/// Ends the process with the standard assertion report unless `expression` holds. The function named in the report is
/// the one in which the macro stands, in the words of the compiler that built it. GCC's are the agreed ones:
///
///     GCC      void bufstl::bufvector<T>::checkbounds(const void*, const void*) const [with T = char]
///     clang    void bufstl::bufvector<char>::checkbounds(const void *, const void *) const [T = char]
#define QL_ASSERT(expression)                                                                                          \
    (__builtin_expect(static_cast<bool>(expression), 1)                                                                \
         ? static_cast<void>(0)                                                                                        \
         : __assert_fail(#expression, __FILE__, __LINE__, __extension__ __PRETTY_FUNCTION__))
