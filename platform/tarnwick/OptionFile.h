#pragma once
#include "JFile.h"
#include "Paths.h"

namespace tarnwick {

/// Settings kept between runs: one record file with a title and a version before the body. The path is in the suite's
/// form, relative to the installation ("config\arvo\sql.opt").
class OptionFile
{
public:
    OptionFile(const QString &path, const QString &title, int version);
    virtual ~OptionFile() = default;

    const SuitePath &path() const { return m_path; }
    void setPath(const QString &path) { m_path = SuitePath(path); }
    const QString &title() const { return m_title; }
    int version() const { return m_version; }

    /// Loads the file when it is there; returns false and keeps the defaults when it is not. Throws JFileError for a
    /// damaged file or one of another title, and for one of a newer version, which is then never overwritten by
    /// store(). The record is as before when it throws.
    bool load(const PathRoots &roots);
    /// The same, but only when the file is another than this record last read or wrote: what another running program
    /// has stored meanwhile is taken over.
    bool loadIfChanged(const PathRoots &roots);
    /// Throws FileError; also when the file there is of a newer version.
    void store(const PathRoots &roots);
    /// The same on a file of the machine chosen by the user.
    void loadFrom(const QString &machinePath);
    void storeTo(const QString &machinePath);

protected:
    /// Reads or writes the body. version is that of the file read, or the newest when writing.
    virtual void serializeBody(JFile &file, int version) = 0;
    virtual void resetToDefaults() = 0;

private:
    void noteStamp(const QString &machinePath);

    SuitePath m_path;
    QString m_title;
    int m_version;
    QByteArray m_stamp; ///< of the file as it was last read or written here
};

} // namespace tarnwick
