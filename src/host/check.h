// Fatal checks: what only a programming error can break, in release builds too.
#pragma once

// The C library's; its header hides the declaration in release builds.
extern "C" [[noreturn]] void __assert_fail(const char *expression, const char *file, unsigned line,
                                           const char *operation) noexcept;

namespace ndef {

// Stops the process unless the condition holds. Operation and line are the caller's unless it passes on its own
// caller's.
inline void require(bool holds, const char *expression, const char *operation = __builtin_FUNCTION(),
                    unsigned line = __builtin_LINE())
{
    holds ? void() : __assert_fail(expression, "nfc_ndef_rtd_lib", line, operation);
}

} // namespace ndef
