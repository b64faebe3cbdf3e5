// Inlining by force, in optimised builds only.
//
// The operations over field lists are generic functions that are called once per field. Left to its own limits the
// compiler keeps some of those calls, which costs about a sixth of the speed of the codec. Debug builds gain nothing
// and would only compile slower, so there the attribute is absent and every field is a frame a debugger can step into.
#pragma once

#ifdef __OPTIMIZE__
#define FORCE_INLINE [[gnu::always_inline]] inline
#define FORCE_INLINE_LAMBDA __attribute__((always_inline))
#else
#define FORCE_INLINE inline
#define FORCE_INLINE_LAMBDA
#endif

/// For what throws or builds texts: out of line and away from the hot code.
#define COLD_PATH [[gnu::noinline, gnu::cold]]
