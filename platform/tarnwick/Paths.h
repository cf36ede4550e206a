#pragma once
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Base folders of the suite's paths, as absolute machine paths with forward slashes.
struct PathRoots
{
    QString palomineDir; ///< the installation: option files, user folders
    QString projectDir;  ///< empty if there is no project

    /// palomineDir comes from the environment variable PALOMINE_DIR; if it is not set, it is a folder "palomine" in the
    /// user's data folder, created on first use. Missing sub-folders (config\arvo, user\queries, user\map_templates,
    /// user\map_headers, user\display_formats) are created if possible; otherwise the first write into them reports the
    /// error.
    static PathRoots fromEnvironment(const QString &projectDir = {});
    /// Creates missing sub-folders of the installation. Throws FileError.
    void makeInstallationFolders() const;
};

/// A path in the suite's form: with backslashes; relative to the project folder, beginning with "[PALOMINE_DIR]", or
/// absolute. Only this class handles separators: records store text(), the system gets machinePath().
class SuitePath
{
public:
    SuitePath() = default;
    /// From the suite's form; slashes are converted to backslashes.
    explicit SuitePath(const QString &text);
    /// From a machine path: relative if it is inside the project, "[PALOMINE_DIR]\..." if inside the installation, else
    /// absolute.
    static SuitePath fromMachine(const QString &machinePath, const PathRoots &roots);

    const QString &text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }
    /// A relative path is taken below the project folder.
    QString machinePath(const PathRoots &roots) const;
    /// A relative path is taken below the installation, as for option files.
    QString installationPath(const PathRoots &roots) const;

    QString fileName() const;  ///< the part after the last separator
    QString baseName() const;  ///< fileName() without its extension
    QString extension() const; ///< with its dot; empty if there is none
    QString folder() const;    ///< the part before the last separator; empty if there is none
    /// The text without the given leading folder ("queries"), if it has it; case and kind of separator are ignored.
    QString relativeTo(const QString &folder) const;
    bool isBelow(const QString &folder) const;
    /// For display: relativeTo(folder); an absolute path in the machine's notation.
    QString shown(const QString &folder = {}) const;
    SuitePath withExtension(const QString &extensionWithDot) const;

    bool operator==(const SuitePath &other) const = default;

private:
    QString m_text;
};

/// Converts a text to a file name that is valid on every system: forbidden characters become "_".
QString validFileName(const QString &text);

} // namespace tarnwick
