#pragma once
#include <QHash>
#include <QList>
#include <QString>

namespace brannock {

/// The codes of indications and what each needs.
class DefectList
{
public:
    /// Fields that a code may require, by the numbers that callers pass.
    enum Field { Location = 1, Volts = 2, Phase = 3, Percent = 4 };

    struct Code
    {
        QString code;
        QString description;
        QList<int> required;
    };

    /// The usual codes of the trade; projects may carry their own in defects.txt.
    static DefectList standard();
    /// Reads a list; throws tarnwick::FileError.
    static DefectList read(const QString &machinePath);

    /// Whether entries of that code need the field. The pseudo code "PCNT" stands for a depth in per cent.
    bool isRequiredField(QStringView code, int field) const;
    const Code *find(QStringView code) const;
    const QList<Code> &codes() const { return m_codes; }
    /// False when the file it was read from does not state the number of its rows.
    bool isCounted() const { return m_isCounted; }

private:
    void append(const Code &code);

    QList<Code> m_codes;
    QHash<QString, qsizetype> m_places; ///< in the list, by code
    bool m_isCounted = true;
};

} // namespace brannock
