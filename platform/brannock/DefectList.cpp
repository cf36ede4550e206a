#include "DefectList.h"

#include <fenwright/TableScanner.h>

using namespace Qt::StringLiterals;
using fenwright::TableScanner;

namespace brannock {

namespace {

struct StandardCode
{
    QStringView code;
    QStringView description;
    QStringView needs; ///< L location, V volts, P phase, D depth in per cent
};

constexpr StandardCode kStandardCodes[] = {
    {u"NDD", u"No detectable degradation", u""},
    {u"PCNT", u"Depth in per cent of the wall", u"LVPD"},
    {u"PCT", u"Depth in per cent of the wall", u"LVPD"},
    {u"WAR", u"Wear at a support or bar", u"LVD"},
    {u"DNT", u"Dent at a structure", u"LV"},
    {u"DNG", u"Ding in the free span", u"LV"},
    {u"BLG", u"Bulge", u"LV"},
    {u"OXP", u"Overexpansion", u"LV"},
    {u"EXP", u"Expansion anomaly", u"LV"},
    {u"MBM", u"Manufacturing buff mark", u"LVP"},
    {u"PVN", u"Permeability variation", u"LV"},
    {u"DEP", u"Deposit", u"LV"},
    {u"SLG", u"Sludge", u"L"},
    {u"PLP", u"Possible loose part", u"L"},
    {u"LPI", u"Loose part indication", u"LV"},
    {u"NQI", u"Non-quantifiable indication", u"LVP"},
    {u"DSI", u"Distorted support indication", u"LVP"},
    {u"DTI", u"Distorted tubesheet indication", u"LVP"},
    {u"DNI", u"Dent with a possible indication", u"LVP"},
    {u"FSI", u"Free-span indication", u"LVP"},
    {u"SAI", u"Single axial indication", u"LVP"},
    {u"MAI", u"Multiple axial indications", u"LVP"},
    {u"SCI", u"Single circumferential indication", u"LVP"},
    {u"MCI", u"Multiple circumferential indications", u"LVP"},
    {u"SVI", u"Single volumetric indication", u"LVP"},
    {u"MVI", u"Multiple volumetric indications", u"LVP"},
    {u"VOL", u"Volumetric indication", u"LVP"},
    {u"INR", u"Indication not reportable", u"LV"},
    {u"INF", u"Indication not found", u"L"},
    {u"RIC", u"Reinspection, incomplete test", u""},
    {u"BDA", u"Bad data", u""},
    {u"RBD", u"Retest, bad data", u""},
    {u"RMB", u"Retest, magnetic bias", u""},
    {u"OBS", u"Obstructed", u""},
    {u"RST", u"Restricted", u""},
    {u"TBP", u"To be plugged", u""},
    {u"PLG", u"Plugged", u""},
    {u"SLV", u"Sleeved", u""},
};

struct FieldWord
{
    QStringView word;
    QChar letter;
    DefectList::Field field;
};

constexpr FieldWord kFieldWords[] = {
    {u"location", u'L', DefectList::Location},
    {u"volts", u'V', DefectList::Volts},
    {u"phase", u'P', DefectList::Phase},
    {u"percent", u'D', DefectList::Percent},
};

QList<int> requiredFields(const TableScanner &table, int column)
{
    QList<int> fields;
    const QStringList words = table.text(column).split(u',', Qt::SkipEmptyParts);
    for (const QString &part : words) {
        const QString word = part.trimmed().toLower();
        const auto known = std::find_if(std::begin(kFieldWords), std::end(kFieldWords),
                                        [&](const FieldWord &field) { return field.word == word; });
        if (known == std::end(kFieldWords))
            table.fail(column, u"'%1' is not one of location, volts, phase, percent"_s.arg(word));
        fields.append(known->field);
    }
    return fields;
}

} // namespace

DefectList DefectList::standard()
{
    DefectList list;
    for (const StandardCode &standard : kStandardCodes) {
        Code code{standard.code.toString(), standard.description.toString(), {}};
        for (const FieldWord &field : kFieldWords) {
            if (standard.needs.contains(field.letter))
                code.required.append(field.field);
        }
        list.append(code);
    }
    return list;
}

DefectList DefectList::read(const QString &machinePath)
{
    TableScanner table = TableScanner::open(machinePath, {u"code"_s});
    const int code = table.column(u"code");
    const int description = table.column(u"description");
    const int required = table.column(u"required");
    DefectList list;
    list.m_isCounted = table.isCounted();
    while (table.next()) {
        table.requireCells();
        Code entry{table.text(code).trimmed(), table.text(description).trimmed(), requiredFields(table, required)};
        if (entry.code.isEmpty())
            table.fail(code, u"the cell is empty"_s);
        if (list.find(entry.code))
            table.fail(code, u"'%1' occurs twice"_s.arg(entry.code));
        list.append(entry);
    }
    return list;
}

void DefectList::append(const Code &code)
{
    m_places.insert(code.code, m_codes.size());
    m_codes.append(code);
}

const DefectList::Code *DefectList::find(QStringView code) const
{
    // Called for each entry of a report: the key is not copied.
    const auto found = m_places.constFind(QString::fromRawData(code.data(), code.size()));
    return found == m_places.constEnd() ? nullptr : &m_codes[*found];
}

bool DefectList::isRequiredField(QStringView code, int field) const
{
    const Code *entry = find(code);
    return entry && entry->required.contains(field);
}

} // namespace brannock
