#pragma once
#include <gtest/gtest.h>
#include <QFile>

namespace support {

/// Writes the file, which a test expects to succeed, and returns its path.
inline QString writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    EXPECT_EQ(file.write(content), content.size());
    return path;
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

} // namespace support
