#pragma once
#include <exception>
#include <QByteArray>
#include <QString>

namespace jet {

/// A Jet file could not be read completely. text() is a sentence for the user that names the file.
class JetError : public std::exception
{
public:
    enum class Reason {
        CannotOpen,    ///< missing file, no permission, or refused by the library below
        NotJet,        ///< not a Jet file
        NewerFormat,   ///< Access 2007 and later
        CutShort,      ///< pages are missing at the end
        Damaged,       ///< the list of objects cannot be read
        OutOfMemory,   ///< in the reading process
        ReaderMissing, ///< the reading program is missing
        ReaderFailed,  ///< the reading process was ended by a signal or a limit, or sent invalid data
        ReaderStuck    ///< the reading process sent nothing for too long
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
