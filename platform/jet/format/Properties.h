#pragma once
#include "TextCodec.h"

#include <QHash>

namespace jet::format {

/// Parsed block of properties: those of the object itself under the empty name, those of its fields under the field
/// names. Names are in lower case. Booleans are "1" or "0".
class Properties
{
public:
    /// Returns false if the block is truncated; the properties before are kept.
    bool parse(Bytes block, bool jet4, const TextCodec &text);

    /// Empty if there is no such property.
    QString text(const QString &owner, const QString &property) const;
    bool flag(const QString &owner, const QString &property) const;

private:
    QStringList parseNames(Bytes chunk, const TextCodec &text) const;
    void parseValues(Bytes chunk, const QStringList &names, const TextCodec &text);

    QHash<QString, QHash<QString, QString>> m_owners;
};

} // namespace jet::format
