#pragma once
#include "JFile.h"
#include "Paths.h"

namespace tarnwick {

/// Settings that are kept between runs, in one record file with a title and a version before the body. The path is in
/// the suite's form, relative to the installation ("config\arvo\sql.opt").
class OptionFile
{
public:
    OptionFile(const QString &path, const QString &title, int version);
    virtual ~OptionFile() = default;

    const SuitePath &path() const { return m_path; }
    void setPath(const QString &path) { m_path = SuitePath(path); }
    const QString &title() const { return m_title; }
    int version() const { return m_version; }

    /// Loads the file if it exists; otherwise returns false and keeps the defaults. Throws JFileError if the file is
    /// damaged, has another title, or is of a newer version, which store() then never overwrites. If it throws, the
    /// record is unchanged.
    bool load(const PathRoots &roots);
    /// Loads the file only if it has changed since this record last read or wrote it, that is, if another program has
    /// stored it.
    bool loadIfChanged(const PathRoots &roots);
    /// Throws FileError, also if the existing file is of a newer version.
    void store(const PathRoots &roots);
    /// Load and store a file chosen by the user, by its machine path.
    void loadFrom(const QString &machinePath);
    void storeTo(const QString &machinePath);

protected:
    /// Reads or writes the body. version is the version of the file when reading, the newest when writing.
    virtual void serializeBody(JFile &file, int version) = 0;
    virtual void resetToDefaults() = 0;

private:
    void noteStamp(const QString &machinePath);

    SuitePath m_path;
    QString m_title;
    int m_version;
    QByteArray m_stamp; ///< identifies the file as last read or written by this object
};

} // namespace tarnwick
