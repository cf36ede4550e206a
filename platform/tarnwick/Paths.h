#pragma once
#include <QString>
#include <QStringList>

namespace tarnwick {

/// The folders that the suite's paths are relative to, as absolute paths of the machine with forward slashes.
struct PathRoots
{
    QString palomineDir; ///< the installation: option files, user folders
    QString projectDir;  ///< empty without a project

    /// palomineDir from the environment (PALOMINE_DIR), else a folder "palomine" in the user's data folder, which is
    /// made on first use. Its sub-folders (config\arvo, user\queries, user\map_templates, user\map_headers,
    /// user\display_formats) are made where they are missing and can be; what needs them says so when it cannot write.
    static PathRoots fromEnvironment(const QString &projectDir = {});
    /// Makes the installation's sub-folders where they are missing. Throws FileError.
    void makeInstallationFolders() const;
};

/// A path in the suite's form: backslashes, relative to the project folder, or beginning with "[PALOMINE_DIR]", or
/// absolute. The only class that knows of separators; records keep text(), the machine gets machinePath().
class SuitePath
{
public:
    SuitePath() = default;
    /// From the suite's form; slashes are taken as backslashes.
    explicit SuitePath(const QString &text);
    /// From a path of the machine: relative to the project when it lies in it, "[PALOMINE_DIR]\..." when it lies in the
    /// installation, else absolute.
    static SuitePath fromMachine(const QString &machinePath, const PathRoots &roots);

    const QString &text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }
    /// For a path relative to the project (or absolute, or [PALOMINE_DIR]).
    QString machinePath(const PathRoots &roots) const;
    /// The same, but a relative path is taken below the installation, as those of option files are.
    QString installationPath(const PathRoots &roots) const;

    QString fileName() const;  ///< the part after the last separator
    QString baseName() const;  ///< fileName() without its extension
    QString extension() const; ///< with its dot, empty without one
    QString folder() const;    ///< the part before the last separator, empty without one
    /// The text without the given leading folder ("queries"), when it has it; case and kind of separator do not count.
    QString relativeTo(const QString &folder) const;
    bool isBelow(const QString &folder) const;
    /// For the eye: relativeTo(folder); an absolute path as this machine writes it.
    QString shown(const QString &folder = {}) const;
    SuitePath withExtension(const QString &extensionWithDot) const;

    bool operator==(const SuitePath &other) const = default;

private:
    QString m_text;
};

/// A text made into a valid file name on every system: forbidden characters become "_".
QString validFileName(const QString &text);

} // namespace tarnwick
