#pragma once

namespace jet::confine {

/// Whether confine() does anything: an address sanitizer needs more of the system than a reader may have.
extern const bool kCanConfine;

/// Takes from this process, without a way back, everything but reading files and writing to what is open: no file is
/// made, changed or removed, no connection opened, no process or thread started, no program run, no other process
/// reached, and no right gained. Such a call fails with "not permitted". False when the system refused to do so.
bool confine();

} // namespace jet::confine
