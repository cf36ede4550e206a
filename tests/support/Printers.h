#pragma once
#include <ostream>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE

/// So that a failed comparison shows the text and not its bytes.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << '[';
    for (const QString &text : texts)
        *out << '"' << text.toStdString() << "\" ";
    *out << ']';
}

QT_END_NAMESPACE
