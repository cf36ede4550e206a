#pragma once
#include <QHash>
#include <QList>
#include <QString>

namespace brannock {

/// The codes of indications and the fields that each requires.
class DefectList
{
public:
    /// Fields that a code may require.
    enum Field { Location = 1, Volts = 2, Phase = 3, Percent = 4 };

    struct Code
    {
        QString code;
        QString description;
        QList<int> required;
    };

    /// The usual codes; projects may have their own list in defects.txt.
    static DefectList standard();
    /// Reads a list. Throws tarnwick::FileError.
    static DefectList read(const QString &machinePath);

    /// Returns true if entries of that code require the field. The pseudo code "PCNT" stands for a depth in per cent.
    bool isRequiredField(QStringView code, int field) const;
    const Code *find(QStringView code) const;
    const QList<Code> &codes() const { return m_codes; }
    /// False if the file does not state its number of rows.
    bool isCounted() const { return m_isCounted; }

private:
    void append(const Code &code);

    QList<Code> m_codes;
    QHash<QString, qsizetype> m_places; ///< index in the list, by code
    bool m_isCounted = true;
};

} // namespace brannock
