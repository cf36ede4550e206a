#pragma once
#include <tarnwick/JFile.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/Paths.h>

namespace map {

/// The texts printed above and below a map. They are templates: keywords in brackets are replaced by values when they
/// are printed. Stored in map files and in header files.
struct MapHeader
{
    static constexpr int kVersion = 2;
    static constexpr int kLeastSize = 4; ///< points
    static constexpr int kMostSize = 20;

    QString name;      ///< name of the header file without folder and extension; empty for none
    QString upperText; ///< in the first font; several lines
    QString lowerText; ///< below the upper text, in the second font
    QString upperFont = QStringLiteral("Times New Roman");
    QString lowerFont = QStringLiteral("Times New Roman");
    qint32 upperSize = 14; ///< points
    qint32 lowerSize = 10;
    /// Who prepared and who checked the map. Both are valid for the entries at that time: a change of the entries
    /// clears them.
    QString preparedBy;
    QString checkedBy;
    QString footerFont = QStringLiteral("Times New Roman");
    qint32 footerSize = 8;

    /// Block version 2; blocks of version 1 hold only the two texts. Sizes out of range are clamped.
    void serialize(tarnwick::JFile &file);
    void clearSignatures();
    /// The header with the keywords in its texts replaced.
    MapHeader expanded(const tarnwick::JMacro &macros) const;
    /// As expanded(); if both texts are empty, with those of the standard header.
    MapHeader printed(const tarnwick::JMacro &macros) const;
    /// Site, component, outage, map and date. Part of every installation.
    static MapHeader standard();
    bool operator==(const MapHeader &) const = default;
};

/// Throw tarnwick::FileError. A header that is read gets the name of its file.
MapHeader readHeaderFile(const QString &machinePath);
void writeHeaderFile(const MapHeader &header, const QString &machinePath);

/// Stores the standard header in the user folder if there is no header. Ignores failures, because the user has not
/// requested it.
void shipStandardHeader(const tarnwick::PathRoots &roots);

/// "Prepared by A     Checked by B", without the part that is empty.
QString signatureLine(const MapHeader &header);

} // namespace map
