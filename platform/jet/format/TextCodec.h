#pragma once
#include "Bytes.h"

#include <iconv.h>
#include <QString>

namespace jet::format {

/// Text of the file as UTF-16. Jet 4 stores UTF-16, plain or with runs of one-byte characters; Jet 3 the characters of
/// the file's code page.
class TextCodec
{
public:
    /// codePage 0 is taken as 1252.
    TextCodec(bool jet4, int codePage);
    ~TextCodec();
    TextCodec(const TextCodec &) = delete;
    TextCodec &operator=(const TextCodec &) = delete;

    /// Appends the text to UTF-16. False when some bytes mean no character; they become U+FFFD.
    bool decode(Bytes bytes, QString &to) const;
    /// A name of the schema; Damage when it holds what no name can.
    QString name(Bytes bytes) const;

private:
    bool decodeUnicode(Bytes bytes, QString &to) const;
    bool decodeCompressed(Bytes bytes, QString &to) const;
    bool decodeCodePage(Bytes bytes, QString &to) const;

    bool m_jet4;
    iconv_t m_converter; ///< of another code page than 1252; (iconv_t)-1 when there is none
};

} // namespace jet::format
