#pragma once

#if defined(__has_feature)
#define ARVO_HAS_FEATURE(feature) __has_feature(feature)
#else
#define ARVO_HAS_FEATURE(feature) 0
#endif

namespace jet::confine {

/// It maps terabytes at its start, and looks for leaks at the end with the help of another process.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = ARVO_HAS_FEATURE(address_sanitizer);
#endif

} // namespace jet::confine
