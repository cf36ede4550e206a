#pragma once
#include "FieldTypes.h"

#include <QList>
#include <QString>
#include <tarnwick/OptionFile.h>

namespace conversion {

/// One field of a spec: which characters, and what they fill. Columns are 0-based and inclusive; in the comma-delimited
/// layout the first column is the 0-based number of the value and the last is not used.
struct ConvField
{
    static constexpr quint32 kDefaultColour = 0xF0F0F0;

    qint32 type = 0; ///< a ReportFieldType, FilenameFieldType or CommentFieldType, by the list the field stands in
    qint32 part = 0; ///< a FilenamePart or CommentPart; not read for report fields
    QString keyword; ///< of a comment field: the text before the value
    qint32 firstColumn = 0;
    qint32 lastColumn = 0;
    /// The text last cut out for the field. It stays from line to line, so that a line that is too short takes it.
    QString value;
    qint32 flag = 0;
    quint32 colour = kDefaultColour; ///< 0x00BBGGRR; marks the field's columns in the view of the text

    bool operator==(const ConvField &) const = default;
};

/// A pair of texts: a foreign word and the suite's code for it, or a description and a file pattern.
struct TextPair
{
    QString from;
    QString entry;
    bool operator==(const TextPair &) const = default;
};

/// How a foreign text report is read: a format file, "*.fmt" in the project's folder report_formats.
class ReportConvSpec : public tarnwick::OptionFile
{
public:
    static constexpr const char16_t *kDefaultPath = u"report_formats\\default.fmt";

    ReportConvSpec();

    qint32 headerLines = 0; ///< so many lines at the top are header lines whatever they hold
    qint32 layout = 0;      ///< a FieldLayout
    QList<ConvField> reportFields;
    QList<ConvField> filenameFields;
    QList<ConvField> commentFields;
    QList<TextPair> operTypes; ///< from the foreign word to the suite's code
    QList<TextPair> fileTypes; ///< description and pattern ("*.txt") for the Open dialog

    bool isCommaDelimited() const { return layout == qint32(FieldLayout::CommaDelimited); }
    /// The suite's code for a foreign word: of the first pair with exactly that word; a word without one in upper case.
    QString mapOperType(const QString &text) const;
    /// The settings of the other record; path, title and version stay.
    void assignSettings(const ReportConvSpec &other);
    bool sameSettings(const ReportConvSpec &other) const;
    void resetToDefaults() override;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
};

} // namespace conversion
