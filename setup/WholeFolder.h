#pragma once
#include <functional>
#include <QString>

namespace setup {

/// Makes a folder completely or not at all. fill gets the path of a temporary folder beside it, which takes the
/// wanted name when fill returns. If fill throws, or the program is killed, the wanted folder does not exist; what a
/// killed program has left is removed by a later run.
///
/// The wanted folder must not exist or be empty, and the folder that it is in must exist. Throws tarnwick::FileError.
void makeWholeFolder(const QString &wanted, const std::function<void(const QString &folder)> &fill);

} // namespace setup
