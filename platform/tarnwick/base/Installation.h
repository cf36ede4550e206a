#pragma once
#include <QString>

namespace tarnwick {

/// Places of the program's own files. They are found from the folder of the running program, so an installation can be
/// moved or copied as a whole; the build folder has the same layout.
class Installation
{
public:
    /// A helper program: the one beside the running program, else the one in the folder for helpers. The path of the
    /// latter if there is none.
    static QString helperProgram(const QString &name);
    /// A file or folder that is installed for reading, such as the guide. It may be missing.
    static QString dataPath(const QString &name);
    /// Folder of the user's guide; its first page is index.html.
    static QString guideFolder() { return dataPath(QStringLiteral("guide")); }
};

/// Version of this program, such as "1.0".
QString programVersion();
/// Version control's name of the sources that the program was built from. Empty if it was built without one.
QString sourceRevision();

} // namespace tarnwick
