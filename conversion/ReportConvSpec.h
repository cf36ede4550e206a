#pragma once
#include "FieldTypes.h"

#include <QList>
#include <QString>
#include <tarnwick/OptionFile.h>

namespace conversion {

/// One field of a spec: which characters are read, and what they set. Columns are 0-based and inclusive. In the
/// comma-delimited layout the first column is the 0-based number of the value, and the last is not used.
struct ConvField
{
    static constexpr tarnwick::ColourRef kDefaultColour{0xF0F0F0};

    qint32 type = 0; ///< ReportFieldType, FilenameFieldType or CommentFieldType, depending on the list
    qint32 part = 0; ///< FilenamePart or CommentPart; not used by report fields
    QString keyword; ///< comment fields: the text before the value
    qint32 firstColumn = 0;
    qint32 lastColumn = 0;
    /// The text last read for the field. If a line is too short, it keeps the text of an earlier line.
    QString value;
    qint32 flag = 0;
    tarnwick::ColourRef colour = kDefaultColour; ///< marks the field's columns in the text view

    bool operator==(const ConvField &) const = default;
};

/// A pair of texts: a foreign word and the suite's code, or a description and a file pattern.
struct TextPair
{
    QString from;
    QString entry;
    bool operator==(const TextPair &) const = default;
};

/// Describes how a foreign text report is read. Stored as a format file, "*.fmt" in the project's folder
/// report_formats.
class ReportConvSpec : public tarnwick::OptionFile
{
public:
    static constexpr const char16_t *kDefaultPath = u"report_formats\\default.fmt";

    ReportConvSpec();

    qint32 headerLines = 0; ///< this many lines at the top are header lines, whatever they contain
    qint32 layout = 0;      ///< FieldLayout
    QList<ConvField> reportFields;
    QList<ConvField> filenameFields;
    QList<ConvField> commentFields;
    QList<TextPair> operTypes; ///< foreign word and the suite's code
    QList<TextPair> fileTypes; ///< description and pattern ("*.txt") for the Open dialog

    bool isCommaDelimited() const { return layout == qint32(FieldLayout::CommaDelimited); }
    /// The suite's code for a foreign word: from the first pair with exactly that word; without one, the word in upper
    /// case.
    QString mapOperType(const QString &text) const;
    /// Copies the settings of another spec. Path, title and version are kept.
    void assignSettings(const ReportConvSpec &other);
    bool sameSettings(const ReportConvSpec &other) const;
    /// Loads the format file. If there is none, sets the defaults and returns false, which the caller tells the user.
    /// Throws tarnwick::FileError.
    bool loadOrReset(const QString &machinePath);
    void resetToDefaults() override;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
};

} // namespace conversion
