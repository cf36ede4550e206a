#include "SectionEditor.h"

#include <brannock/gui/ColourButton.h>
#include <tarnwick/gui/NumberField.h>

#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JTablePrintArg;
using tarnwick::NumberField;
using tarnwick::PrintSection;

namespace {

constexpr int kFontCharacters = 22;
constexpr int kTextCharacters = 80;
/// All sections are edited in this size; their own size is that of the paper.
constexpr int kEditorPoints = 10;

template <typename Field>
Field *addField(QHBoxLayout &row, const QString &text, Field *field)
{
    auto *label = new QLabel(text);
    label->setBuddy(field);
    field->setAccessibleName(text);
    field->setObjectName(text.toLower());
    row.addWidget(label);
    row.addWidget(field);
    return field;
}

QColor colourOf(tarnwick::ColourRef colour)
{
    return {colour.red(), colour.green(), colour.blue()};
}

} // namespace

SectionEditor::SectionEditor(int section, brannock::ColourChooser &chooser, QWidget *parent)
    : QGroupBox(JTablePrintArg::sectionName(section), parent)
    , m_chooser(chooser)
{
    const bool isBody = section == JTablePrintArg::ReportBody;
    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    makeFields(*row);
    layout->addLayout(row);
    if (isBody) {
        while (m_align->count() > 1)
            m_align->removeItem(1);
        return;
    }
    makeText(title());
    layout->addWidget(m_text);
}

void SectionEditor::makeFields(QHBoxLayout &row)
{
    m_font = addField(row, u"Font"_s, new QComboBox);
    m_font->setEditable(true);
    m_font->addItems(QFontDatabase::families());
    m_font->setMinimumContentsLength(kFontCharacters);
    m_font->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_size = addField(row, u"Size"_s, new NumberField);
    m_size->setFormat(u"%d pts"_s);
    m_size->setLimits(4, 30, 1);
    m_align = addField(row, u"Align"_s, new QComboBox);
    for (const auto align : {PrintSection::Align::Left, PrintSection::Align::Right, PrintSection::Align::Center})
        m_align->addItem(tarnwick::printAlignName(align), int(align));
    m_spacing = addField(row, u"Spacing"_s, new NumberField);
    m_spacing->setFormat(u"%.2f in"_s);
    m_spacing->setLimits(0, 2.0, 0.1);
    m_colour = addField(row, u"Color"_s, new brannock::ColourButton(m_chooser));
    row.addStretch(1);

    const auto change = [this](const auto &store) {
        if (m_isShowing)
            return;
        store();
        showLook();
        Q_EMIT changed();
    };
    connect(m_font, &QComboBox::currentTextChanged, this,
            [this, change](const QString &text) { change([this, &text] { m_section.font = text; }); });
    const auto number = [this, change](NumberField *field, const std::function<void()> &store) {
        connect(field, &NumberField::numberEdited, this, [change, store] { change(store); });
    };
    number(m_size, [this] { m_section.size = qint32(m_size->whole()); });
    number(m_spacing, [this] { m_section.spacing = m_spacing->value(); });
    connect(m_align, &QComboBox::currentIndexChanged, this, [this, change] {
        change([this] { m_section.align = PrintSection::Align(m_align->currentData().toInt()); });
    });
    connect(m_colour, &brannock::ColourButton::colourChanged, this, [this, change](const QColor &colour) {
        change([this, &colour] {
            m_section.colour = tarnwick::ColourRef::fromRgb(colour.red(), colour.green(), colour.blue());
        });
    });
}

void SectionEditor::makeText(const QString &name)
{
    m_text = new QPlainTextEdit;
    m_text->setObjectName(u"text"_s);
    m_text->setAccessibleName(name);
    m_text->setTabChangesFocus(true);
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        if (m_isShowing || m_own)
            return;
        m_section.text = m_text->toPlainText();
        Q_EMIT changed();
    });
}

void SectionEditor::setSection(const PrintSection &section)
{
    const QScopedValueRollback showing(m_isShowing, true);
    m_section = section;
    m_font->setCurrentText(section.font);
    m_size->setNumber(section.size);
    m_align->setCurrentIndex(m_align->findData(int(section.align)));
    m_spacing->setNumber(section.spacing);
    m_colour->setColour(colourOf(section.colour));
    if (m_text && m_text->toPlainText() != section.text)
        m_text->setPlainText(section.text);
    showLook();
}

void SectionEditor::showLook()
{
    if (!m_text)
        return;
    QFont font(m_section.font, kEditorPoints, QFont::Normal);
    m_text->setFont(font);
    // The colour is that of ink: it is shown on paper. Black follows the theme.
    QPalette palette = parentWidget() ? parentWidget()->palette() : this->palette();
    if (m_section.colour != tarnwick::ColourRef()) {
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, colourOf(m_section.colour));
    }
    m_text->setPalette(palette);
}

void SectionEditor::setLines(int lines)
{
    if (!m_text)
        return;
    const QFontMetrics metrics(QFont(m_section.font, kEditorPoints));
    const int frame = 2 * m_text->frameWidth() + int(2 * m_text->document()->documentMargin());
    m_text->setMinimumSize(kTextCharacters * metrics.averageCharWidth() +
                               m_text->verticalScrollBar()->sizeHint().width() + frame,
                           lines * metrics.lineSpacing() + frame);
    m_text->setMaximumHeight(m_text->minimumHeight());
}

void SectionEditor::showPreview(const QString &text)
{
    if (!m_text || m_own)
        return;
    m_own = m_text->document();
    m_own->setParent(this);
    auto *preview = new QTextDocument(text, this);
    preview->setDocumentLayout(new QPlainTextDocumentLayout(preview));
    preview->setDefaultFont(m_text->font());
    preview->setPlainText(text);
    m_text->setDocument(preview);
}

void SectionEditor::endPreview()
{
    if (!m_own)
        return;
    QTextDocument *preview = m_text->document();
    m_text->setDocument(m_own);
    m_own->setParent(m_text);
    m_own = nullptr;
    preview->deleteLater();
}

} // namespace query
