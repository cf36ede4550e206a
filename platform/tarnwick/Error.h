#pragma once
#include <exception>
#include <QByteArray>
#include <QString>

namespace tarnwick {

/// A failure with a sentence for the user. Base class of the program's own exceptions.
class Error : public std::exception
{
public:
    explicit Error(const QString &text)
        : m_text(text)
        , m_what(text.toUtf8())
    {
    }
    const QString &text() const { return m_text; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_text;
    QByteArray m_what;
};

/// The user stopped the work. Never shown in an error box.
class Cancelled : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

/// A file cannot be read or written, or its content is wrong. The text contains the file, the place and the reason.
class FileError : public Error
{
public:
    /// line: 1-based; 0 if the place is not a line
    FileError(const QString &file, int line, const QString &reason);
    const QString &file() const { return m_file; }
    int line() const { return m_line; }
    const QString &reason() const { return m_reason; }

private:
    QString m_file;
    int m_line;
    QString m_reason;
};

} // namespace tarnwick
