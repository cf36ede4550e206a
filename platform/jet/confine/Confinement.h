#pragma once

namespace jet::confine {

/// Whether confine() has an effect: an address sanitizer needs system calls that a reader must not have.
extern const bool kCanConfine;

/// Irrevocably restricts this process to reading files and writing to open descriptors: it cannot create, change or
/// remove files, open connections, start processes, threads or programs, signal other processes, or gain permissions.
/// Such calls fail with "not permitted". Returns false if the system refused the restriction.
bool confine();

} // namespace jet::confine
