#include "HeaderDlg.h"

#include "HintText.h"
#include "KeywordMarks.h"
#include "PagePreview.h"

#include <tarnwick/gui/Help.h>
#include <tarnwick/gui/ReturnKey.h>

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStyle>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr QSize kFirstSize(1040, 640);

enum HeaderCommand : int {
    OpenHeader = tarnwick::kFirstUnnumbered,
    SaveHeader,
    SaveHeaderAs,
    ImportHeader,
    ExportHeader,
};

constexpr tarnwick::CommandRow kRows[] = {
    {OpenHeader, u"&Open ...", u"Open a header file of the project", tarnwick::kAlways, u"Ctrl+O", u"openHeader"},
    {SaveHeader, u"&Save", u"Save the header to its file", tarnwick::kAlways, u"Ctrl+S", u"saveHeader"},
    {SaveHeaderAs, u"Save &As ...", u"Save the header to another file", tarnwick::kAlways, nullptr, u"saveHeaderAs"},
    {ImportHeader, u"&Import ...", u"Copy a header of the user folder into the project and open it", tarnwick::kAlways,
     nullptr, u"importHeader"},
    {ExportHeader, u"&Export ...", u"Store this header in the user folder", tarnwick::kAlways, nullptr,
     u"exportHeader"},
};
constexpr tarnwick::MenuItem kMenuBarItems[] = {
    tarnwick::openMenu(u"&File"),     tarnwick::menuItem(OpenHeader), tarnwick::menuItem(SaveHeader),
    tarnwick::menuItem(SaveHeaderAs), tarnwick::kSeparator,           tarnwick::menuItem(ImportHeader),
    tarnwick::menuItem(ExportHeader), tarnwick::kCloseMenu,           tarnwick::kEndOfMenu,
};
constexpr tarnwick::CommandLayout kLayouts[] = {
    {tarnwick::CommandLayout::Kind::MenuBar, u"headerMenu", kMenuBarItems},
};
constinit const tarnwick::CommandTable kCommands(kRows, kLayouts);

void setShownText(QPlainTextEdit *edit, const QString &text, bool readOnly)
{
    edit->setReadOnly(readOnly);
    if (edit->toPlainText() != text)
        edit->setPlainText(text);
}

/// Makes a part scroll if the screen is too low.
QScrollArea *scrolling(QWidget *parts)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(parts);
    area->setMinimumWidth(parts->minimumSizeHint().width() + area->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    area->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    return area;
}

} // namespace

HeaderDlg::HeaderDlg(map::HeaderEditor &editor, const std::function<brannock::MapPicture(const map::MapHeader &)> &page,
                     const QSizeF &inches, double dpi, QWidget *parent)
    : QDialog(parent)
    , m_editor(editor)
    , m_handlers(kCommands)
    , m_actions(m_handlers, this)
    , m_preview(new PagePreview([this, page] { return page(m_editor.header); }, inches, dpi))
{
    setObjectName(u"headerDlg"_s);
    auto *layout = new QVBoxLayout(this);
    makeMenu(layout);
    auto *columns = new QHBoxLayout;
    auto *parts = new QWidget;
    auto *fields = new QVBoxLayout(parts);
    fields->setContentsMargins(0, 0, 0, 0);
    fields->addWidget(makeTexts(), 1);
    fields->addWidget(makeFooter());
    fields->addWidget(makeMapFields());
    columns->addWidget(scrolling(parts), 0);
    columns->addWidget(m_preview, 1);
    layout->addLayout(columns, 1);
    layout->addWidget(makeButtons());
    m_lastText = m_upper;
    fill(false);
    m_upper->setFocus();
    resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
}

void HeaderDlg::makeMenu(QVBoxLayout *layout)
{
    m_handlers.bind(OpenHeader, [this] { run([this] { return m_editor.open(); }); });
    m_handlers.bind(SaveHeader, [this] { run([this] { return m_editor.save(); }); });
    m_handlers.bind(SaveHeaderAs, [this] { run([this] { return m_editor.saveAs(); }); });
    m_handlers.bind(ImportHeader, [this] { run([this] { return m_editor.importHeader(); }); });
    m_handlers.bind(ExportHeader, [this] { run([this] { m_editor.exportHeader(); }); });
    auto *bar = new QMenuBar(this);
    m_actions.fillMenuBar(bar);
    m_actions.refresh();
    layout->setMenuBar(bar);
}

QPlainTextEdit *HeaderDlg::makeText(const QString &name, int lines)
{
    auto *edit = new QPlainTextEdit;
    edit->setObjectName(name);
    edit->setTabChangesFocus(true);
    keepHintReadable(edit);
    const int height = edit->fontMetrics().lineSpacing() * lines + 2 * int(edit->document()->documentMargin()) +
                       2 * edit->frameWidth();
    edit->setMinimumHeight(height);
    edit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    connect(edit, &QPlainTextEdit::textChanged, this, &HeaderDlg::changed);
    // Setting a text also moves its cursor.
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, [this, edit] {
        if (!m_isFilling)
            m_lastText = edit;
    });
    return edit;
}

QWidget *HeaderDlg::makeFont(const QString &label, const QString &name, QString map::MapHeader::*family,
                             qint32 map::MapHeader::*size)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    FontChoice choice{new QFontComboBox, new QSpinBox, family, size};
    choice.family->setObjectName(name);
    choice.family->setAccessibleName(label);
    choice.size->setObjectName(name + u"Size"_s);
    choice.size->setAccessibleName(label + u" size"_s);
    choice.size->setRange(map::MapHeader::kLeastSize, map::MapHeader::kMostSize);
    choice.size->setSuffix(u" pts"_s);
    auto *text = new QLabel(label);
    text->setBuddy(choice.family);
    layout->addWidget(text);
    layout->addWidget(choice.family, 1);
    layout->addWidget(choice.size);
    // A font name that is being typed is not a known family yet.
    connect(choice.family, &QComboBox::activated, this, &HeaderDlg::changed);
    connect(choice.family->lineEdit(), &QLineEdit::editingFinished, this, &HeaderDlg::changed);
    connect(choice.size, &QSpinBox::valueChanged, this, &HeaderDlg::changed);
    m_fonts.append(choice);
    return row;
}

QWidget *HeaderDlg::makeTexts()
{
    auto *box = new QGroupBox(u"Header"_s);
    auto *layout = new QVBoxLayout(box);
    m_upper = makeText(u"upperText"_s, 3);
    m_upper->setAccessibleName(u"Upper text"_s);
    m_lower = makeText(u"lowerText"_s, 4);
    m_lower->setAccessibleName(u"Lower text"_s);
    const auto addText = [layout](const QString &label, QPlainTextEdit *edit, QWidget *font) {
        auto *text = new QLabel(label);
        text->setBuddy(edit);
        auto *row = new QHBoxLayout;
        row->addWidget(text);
        row->addWidget(font, 1);
        layout->addLayout(row);
        layout->addWidget(edit, 1);
    };
    addText(u"&Upper text"_s, m_upper,
            makeFont(u"Font &1"_s, u"font1"_s, &map::MapHeader::upperFont, &map::MapHeader::upperSize));
    addText(u"&Lower text"_s, m_lower,
            makeFont(u"Font &2"_s, u"font2"_s, &map::MapHeader::lowerFont, &map::MapHeader::lowerSize));

    m_expand = new QCheckBox(u"E&xpand macros."_s);
    m_expand->setObjectName(u"expandMacros"_s);
    m_expand->setToolTip(u"Show the values that are printed in place of the keywords"_s);
    m_template = new QCheckBox(u"Show &template."_s);
    m_template->setObjectName(u"showTemplate"_s);
    m_template->setToolTip(u"Show the texts as they are written, and edit them"_s);
    auto *either = new QButtonGroup(this);
    either->addButton(m_template);
    either->addButton(m_expand);
    m_template->setChecked(true);
    connect(m_expand, &QCheckBox::toggled, this, [this](bool on) { fill(on); });
    m_keywords = new QToolButton;
    m_keywords->setObjectName(u"keywords"_s);
    m_keywords->setText(u"Insert &Keyword"_s);
    tarnwick::pressWithReturn(m_keywords);
    m_keywords->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_keywords->setPopupMode(QToolButton::InstantPopup);
    makeKeywords(m_keywords);
    // Otherwise the arrow of the menu covers the text.
    m_keywords->setMinimumWidth(m_keywords->sizeHint().width() +
                                m_keywords->style()->pixelMetric(QStyle::PM_MenuButtonIndicator));
    auto *row = new QHBoxLayout;
    row->addWidget(m_keywords);
    row->addStretch(1);
    row->addWidget(m_template);
    row->addWidget(m_expand);
    layout->addLayout(row);
    m_unknown = new QLabel;
    m_unknown->setObjectName(u"unknownKeywords"_s);
    m_unknown->setTextFormat(Qt::PlainText);
    m_unknown->setWordWrap(true);
    m_unknown->hide();
    layout->addWidget(m_unknown);
    for (QPlainTextEdit *text : {m_upper, m_lower})
        new KeywordMarks(m_editor.macros(), text->document());
    return box;
}

void HeaderDlg::makeKeywords(QToolButton *button)
{
    auto *menu = new QMenu(button);
    const tarnwick::JMacro macros = m_editor.macros();
    for (const tarnwick::JMacro::Entry &macro : macros.entries()) {
        QString text = macro.name;
        if (!macro.value.isEmpty())
            text += u'\t' + fontMetrics().elidedText(macro.value.simplified(), Qt::ElideMiddle, 260);
        menu->addAction(text.replace(u'&', u"&&"_s), this, [this, name = macro.name] {
            m_lastText->insertPlainText(name);
            m_lastText->setFocus();
        });
    }
    button->setMenu(menu);
}

QWidget *HeaderDlg::makeFooter()
{
    auto *box = new QGroupBox(u"Footer"_s);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(makeFont(u"F&ont"_s, u"footerFont"_s, &map::MapHeader::footerFont, &map::MapHeader::footerSize));
    return box;
}

QWidget *HeaderDlg::makeMapFields()
{
    auto *box = new QGroupBox(u"This map"_s);
    auto *layout = new QFormLayout(box);
    const auto addLine = [&](const QString &label, const QString &name) {
        auto *edit = new QLineEdit;
        edit->setObjectName(name);
        edit->setPlaceholderText(u"Emptied when the legend changes"_s);
        keepHintReadable(edit);
        connect(edit, &QLineEdit::textChanged, this, &HeaderDlg::changed);
        layout->addRow(label, edit);
        return edit;
    };
    m_prepared = addLine(u"&Prepared by"_s, u"preparedBy"_s);
    m_checked = addLine(u"&Checked by"_s, u"checkedBy"_s);
    m_description = makeText(u"description"_s, 2);
    m_description->setFixedHeight(m_description->minimumHeight());
    disconnect(m_description, &QPlainTextEdit::cursorPositionChanged, this,
               nullptr); // keywords are not replaced in the description
    layout->addRow(u"&Description"_s, m_description);
    return box;
}

QWidget *HeaderDlg::makeButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *set = new QPushButton(u"&Set Map Header"_s);
    set->setObjectName(u"setHeader"_s);
    set->setDefault(true);
    auto *close = new QPushButton(u"Clos&e"_s);
    close->setObjectName(u"closeHeader"_s);
    close->setAutoDefault(false);
    tarnwick::pressWithReturn(close);
    layout->addWidget(tarnwick::makeHelpButton(*this));
    layout->addStretch(1);
    layout->addWidget(set);
    layout->addWidget(close);
    connect(set, &QPushButton::clicked, this, [this] {
        take();
        m_editor.setMapHeader();
        accept();
    });
    connect(close, &QPushButton::clicked, this, &HeaderDlg::reject);
    return row;
}

void HeaderDlg::fill(bool expanded)
{
    m_isFilling = true;
    const map::MapHeader &template_ = m_editor.header;
    const map::MapHeader shown = expanded ? template_.expanded(m_editor.macros()) : template_;
    setShownText(m_upper, shown.upperText, expanded);
    setShownText(m_lower, shown.lowerText, expanded);
    m_keywords->setEnabled(!expanded);
    m_prepared->setText(template_.preparedBy);
    m_checked->setText(template_.checkedBy);
    setShownText(m_description, m_editor.description, false);
    for (const FontChoice &choice : std::as_const(m_fonts)) {
        choice.family->setCurrentFont(QFont(template_.*choice.familyField));
        choice.family->setEditText(template_.*choice.familyField); // also if this machine does not have the font
        choice.size->setValue(template_.*choice.sizeField);
    }
    m_isFilling = false;
    showChanges();
}

void HeaderDlg::take()
{
    map::MapHeader &header = m_editor.header;
    if (!m_expand->isChecked()) {
        header.upperText = m_upper->toPlainText();
        header.lowerText = m_lower->toPlainText();
    }
    header.preparedBy = m_prepared->text();
    header.checkedBy = m_checked->text();
    m_editor.description = m_description->toPlainText();
    for (const FontChoice &choice : std::as_const(m_fonts)) {
        if (const QString family = choice.family->currentText(); !family.trimmed().isEmpty())
            header.*choice.familyField = family;
        else
            choice.family->setEditText(header.*choice.familyField);
        header.*choice.sizeField = choice.size->value();
    }
}

void HeaderDlg::showStandard()
{
    // Printed only if both texts are empty.
    const bool isPrinted = m_editor.header.upperText.isEmpty() && m_editor.header.lowerText.isEmpty();
    const map::MapHeader standard = isPrinted ? map::MapHeader::standard() : map::MapHeader();
    m_upper->setPlaceholderText(standard.upperText);
    m_lower->setPlaceholderText(standard.lowerText);
}

void HeaderDlg::showUnknown()
{
    const QStringList words = m_editor.unknownKeywords();
    m_unknown->setVisible(!words.isEmpty());
    m_unknown->setText(u"No keyword, printed as it is: "_s + words.join(u", "_s));
}

void HeaderDlg::showChanges()
{
    setWindowTitle(m_editor.title());
    m_preview->pageChanged();
    showStandard();
    showUnknown();
    if (m_editor.edited)
        m_editor.edited();
}

void HeaderDlg::changed()
{
    if (m_isFilling)
        return;
    take();
    showChanges();
}

void HeaderDlg::run(const std::function<void()> &fileCommand)
{
    take(); // includes a font name that is being typed
    fileCommand();
    fill(m_expand->isChecked());
}

void HeaderDlg::reject()
{
    take();
    if (m_editor.mayClose())
        QDialog::reject();
}

} // namespace app
