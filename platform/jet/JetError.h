#pragma once
#include <tarnwick/base/Error.h>

namespace jet {

/// A Jet file could not be read completely. text() is a sentence for the user that names the file.
class JetError : public tarnwick::Error
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
        : Error(text)
        , m_reason(reason)
    {
    }
    Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

} // namespace jet
