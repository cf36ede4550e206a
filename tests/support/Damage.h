#pragma once
#include <gtest/gtest.h>
#include <QByteArray>

namespace support {

/// Reads the content cut off at every byte: each must throw Exception, none may crash. read takes a QByteArray.
template <typename Exception, typename Read>
void expectEveryTruncationThrows(const QByteArray &content, Read read)
{
    ASSERT_NO_THROW(read(content));
    for (qsizetype size = 0; size < content.size(); ++size)
        EXPECT_THROW(read(content.left(size)), Exception) << "cut off after " << size << " bytes";
}

/// Reads the content with every byte in turn set to some other values: each is read, or throws Exception; none may
/// crash.
template <typename Exception, typename Read>
void expectDamageIsSurvived(const QByteArray &content, Read read)
{
    for (qsizetype i = 0; i < content.size(); ++i) {
        for (const char value : {char(0x00), char(0x7f), char(0x80), char(0xff)}) {
            QByteArray damaged = content;
            damaged[i] = value;
            try {
                read(damaged);
            } catch (const Exception &) {
                // what a damaged file should give
            }
        }
    }
}

} // namespace support
