#pragma once
#include <tarnwick/JFile.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/Paths.h>

namespace map {

/// What is printed above and below a map. The texts are templates: bracketed keywords stand for values of the moment.
/// Kept in map files, and by itself in header files.
struct MapHeader
{
    static constexpr int kVersion = 2;
    static constexpr int kLeastSize = 4; ///< points
    static constexpr int kMostSize = 20;

    QString name;      ///< of the header file, without folder and extension; empty for none
    QString upperText; ///< in the first font; several lines
    QString lowerText; ///< below it, in the second font
    QString upperFont = QStringLiteral("Times New Roman");
    QString lowerFont = QStringLiteral("Times New Roman");
    qint32 upperSize = 14; ///< points
    qint32 lowerSize = 10;
    /// Who made the map and who checked it. Both hold for the entries as they were then: a change of the legend empties
    /// them.
    QString preparedBy;
    QString checkedBy;
    QString footerFont = QStringLiteral("Times New Roman");
    qint32 footerSize = 8;

    /// Block version 2; blocks of version 1 hold the two texts alone. Sizes out of range are brought into it.
    void serialize(tarnwick::JFile &file);
    void clearSignatures();
    /// With the texts' keywords replaced.
    MapHeader expanded(const tarnwick::JMacro &macros) const;
    /// The same as it is printed: where both texts are empty, with those of the standard header.
    MapHeader printed(const tarnwick::JMacro &macros) const;
    /// Site, component, outage, map and date. Installations are shipped with it.
    static MapHeader standard();
    bool operator==(const MapHeader &) const = default;
};

/// Throws tarnwick::FileError. The header takes the file's name.
MapHeader readHeaderFile(const QString &machinePath);
void writeHeaderFile(const MapHeader &header, const QString &machinePath);

/// Stores the standard header among the user's templates when there is none at all. Where that is not possible, nothing
/// happens: nobody has asked for it.
void shipStandardHeader(const tarnwick::PathRoots &roots);

/// "Prepared by A     Checked by B", without the part that is empty.
QString signatureLine(const MapHeader &header);

} // namespace map
