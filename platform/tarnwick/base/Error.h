#pragma once
#include <exception>
#include <QByteArray>
#include <QString>

namespace tarnwick {

/// Base of all failures that a user is told about: a sentence for the user, and a number and a place where it has them.
class Error : public std::exception
{
public:
    explicit Error(const QString &text, int number = 0)
        : Error(text, number, text)
    {
    }
    const QString &text() const { return m_text; }
    /// 0: none.
    int number() const { return m_number; }
    /// Where the fault is ("line 3, column 7"); empty when it has no place.
    virtual QString place() const { return {}; }
    /// The reason as an error box shows it below the message of the command that failed.
    virtual QString details() const { return m_text; }
    const char *what() const noexcept override { return m_what.constData(); }

protected:
    /// what: for logs and debuggers, where it says more than the text.
    Error(const QString &text, int number, const QString &what)
        : m_text(text)
        , m_number(number)
        , m_what(what.toUtf8())
    {
    }

private:
    QString m_text;
    int m_number;
    QByteArray m_what;
};

/// The user stopped the work. Not an Error: it is never shown in an error box.
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
    /// The file, with the line where there is one. text() starts with it.
    QString place() const override;

private:
    QString m_file;
    int m_line;
    QString m_reason;
};

} // namespace tarnwick
