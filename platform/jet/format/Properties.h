#pragma once
#include "TextCodec.h"

#include <QHash>

namespace jet::format {

/// What a block of properties says: those of the object itself under the empty name, those of its fields under theirs.
/// Names are kept in lower case. Booleans are "1" or "0".
class Properties
{
public:
    /// False when the block breaks off; what stood before is kept.
    bool parse(Bytes block, bool jet4, const TextCodec &text);

    /// Empty when there is no such property.
    QString text(const QString &owner, const QString &property) const;
    bool flag(const QString &owner, const QString &property) const;

private:
    QStringList parseNames(Bytes chunk, const TextCodec &text) const;
    void parseValues(Bytes chunk, const QStringList &names, const TextCodec &text);

    QHash<QString, QHash<QString, QString>> m_owners;
};

} // namespace jet::format
