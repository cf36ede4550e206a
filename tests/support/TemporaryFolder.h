#pragma once
#include "Files.h"
#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace support {

/// A folder that goes away with the object. Names are relative to it, with slashes; missing sub-folders are made.
class TemporaryFolder
{
public:
    TemporaryFolder() { EXPECT_TRUE(m_dir.isValid()); }

    QString path() const { return m_dir.path(); }
    QString path(const QString &name) const { return m_dir.filePath(name); }

    /// Writes the file and returns its absolute path.
    QString write(const QString &name, const QByteArray &content) const
    {
        const QString target = path(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(target).absolutePath()));
        return writeFile(target, content);
    }

    QString writeText(const QString &name, const QString &text) const { return write(name, text.toUtf8()); }

    QByteArray read(const QString &name) const { return readFile(path(name)); }

    bool has(const QString &name) const { return QFileInfo::exists(path(name)); }

    /// The names in a sub-folder, sorted, hidden ones too: nothing may be left behind.
    QStringList names(const QString &folder = {}) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir m_dir;
};

} // namespace support
