// Inlining by force, in optimised builds only.
//
// The operations over field lists are generic functions that are called once per field. Left to its own limits the
// compiler keeps some of those calls, which costs about a sixth of the speed of the codec. Debug builds gain nothing
// and would only compile slower, so there the attribute is absent and every field is a frame a debugger can step into.
// Sanitizer builds are optimised a little and define QL_NO_FORCED_INLINING: it halves what they take to compile.
#pragma once

#if !defined(__x86_64__) || defined(__ILP32__)
#error "QLProtocol runs on x86-64 only: its codec relies on that processor's instructions and byte order"
#endif

#if defined(__OPTIMIZE__) && !defined(QL_NO_FORCED_INLINING)
#define QL_FORCE_INLINE [[gnu::always_inline]] inline
#define QL_FORCE_INLINE_LAMBDA __attribute__((always_inline))
#else
#define QL_FORCE_INLINE inline
#define QL_FORCE_INLINE_LAMBDA
#endif

/// For what throws or builds texts: out of line and away from the hot code.
#define QL_COLD_PATH [[gnu::noinline, gnu::cold]]
