#pragma once
#include "Bytes.h"

#include <iconv.h>
#include <QString>

namespace jet::format {

/// Converts text of the file to UTF-16. Jet 4 stores UTF-16, optionally with runs of one-byte characters; Jet 3 stores
/// characters of the file's code page.
class TextCodec
{
public:
    /// codePage 0 means 1252.
    TextCodec(bool jet4, int codePage);
    ~TextCodec();
    TextCodec(const TextCodec &) = delete;
    TextCodec &operator=(const TextCodec &) = delete;

    /// Appends the text as UTF-16. Returns false if some bytes are invalid; they become U+FFFD.
    bool decode(Bytes bytes, QString &to) const;
    /// A name in the schema. Throws Damage if it contains characters that a name cannot have.
    QString name(Bytes bytes) const;

private:
    bool decodeUnicode(Bytes bytes, QString &to) const;
    bool decodeCompressed(Bytes bytes, QString &to) const;
    bool decodeCodePage(Bytes bytes, QString &to) const;

    bool m_jet4;
    iconv_t m_converter; ///< for a code page other than 1252; (iconv_t)-1 if there is none
};

} // namespace jet::format
