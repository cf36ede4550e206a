#pragma once
#include "ByteReader.h"

#include <QStringList>
#include <vector>

namespace fuzz {

/// Makes statements over SmallSchema that mean something: each byte decides one thing. Types fit nearly always, so that
/// what is made comes through the binder.
class StatementMaker
{
public:
    explicit StatementMaker(ByteReader &reader)
        : m_reader(reader)
    {
    }

    QString statement();

private:
    /// A source in FROM, with its fields by kind.
    struct Source
    {
        QString alias;
        QStringList numbers;
        QStringList texts;
        QStringList dates;
        QStringList conditions;
    };
    using Sources = std::vector<Source>;

    int below(int end) { return int(m_reader.number<uint8_t>()) % end; }
    /// Never when the bytes are used up.
    bool chance(int percent) { return m_reader.number<uint8_t>() * 100 >= (100 - percent) * 256; }
    QString pick(std::initializer_list<const char16_t *> choices);
    QString fieldOf(QStringList Source::*kind, const QString &otherwise);

    QString select(bool ofOneNumber = false);
    QString grouped(const QString &from);
    QString query();
    QString transform();
    QString change();
    QString from();
    QString table();
    QString joined();
    QString number();
    QString text();
    QString date();
    QString value();
    QString aggregate();
    QString condition();
    QString subquery(); ///< one number a row

    ByteReader &m_reader;
    std::vector<Sources> m_scopes; ///< innermost last
    int m_depth = 0;
    int m_aliases = 0;
};

} // namespace fuzz
