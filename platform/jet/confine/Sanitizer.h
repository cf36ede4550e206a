#pragma once

#if defined(__has_feature)
#define ARVO_HAS_FEATURE(feature) __has_feature(feature)
#else
#define ARVO_HAS_FEATURE(feature) 0
#endif

namespace jet::confine {

/// An address sanitizer maps terabytes at start, and uses another process to check for leaks at exit.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = ARVO_HAS_FEATURE(address_sanitizer);
#endif

} // namespace jet::confine
