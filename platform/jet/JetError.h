#pragma once
#include <exception>
#include <QByteArray>
#include <QString>

namespace jet {

/// A Jet file that could not be read to its end. text() is a sentence for the user that names the file.
class JetError : public std::exception
{
public:
    enum class Reason {
        CannotOpen,    ///< no such file, no right, or not accepted by the library below
        NotJet,        ///< not a Jet file
        NewerFormat,   ///< Access 2007 and later
        CutShort,      ///< pages are missing
        Damaged,       ///< the list of objects cannot be read
        OutOfMemory,   ///< in the reading process
        ReaderMissing, ///< the reading program is not there
        ReaderFailed,  ///< the reading process ended by a signal or a limit, or sent nonsense
        ReaderStuck    ///< it sent nothing for too long
    };

    JetError(Reason reason, const QString &text)
        : m_reason(reason)
        , m_text(text)
        , m_what(text.toUtf8())
    {
    }
    Reason reason() const { return m_reason; }
    const QString &text() const { return m_text; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    Reason m_reason;
    QString m_text;
    QByteArray m_what;
};

/// The user stopped the reading. Never shown in an error box.
class JetCancelled : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

} // namespace jet
