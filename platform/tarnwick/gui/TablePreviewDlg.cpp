#include "TablePreviewDlg.h"

#include "Help.h"
#include "ReturnKey.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int kShadow = 4;
/// Entries of the scale box; a positive value is a percentage of the paper's size.
constexpr int kFitPage = 0;
constexpr int kFitWidth = -1;

} // namespace

/// Shows one page on a grey background.
class TablePreviewDlg::Sheet : public QWidget
{
public:
    explicit Sheet(const TablePrint &print)
        : m_print(print)
    {
        setAccessibleName(u"Page"_s);
    }
    void setPage(int page)
    {
        m_page = page;
        setAccessibleDescription(u"Page %1 of %2"_s.arg(page + 1).arg(m_print.pageCount()));
        update();
    }
    /// pixels: width of the paper
    void setPaperWidth(double pixels)
    {
        m_scale = pixels / (m_print.paper().width() * TablePrint::kDpi);
        setFixedSize(paperSize().toSize() + QSize(2 * kShadow, 2 * kShadow));
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QRectF sheet(QPointF(kShadow, kShadow), paperSize());
        painter.fillRect(sheet.translated(kShadow, kShadow), QColor(0, 0, 0, 60));
        painter.fillRect(sheet, Qt::white);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.translate(sheet.topLeft());
        painter.scale(m_scale, m_scale);
        m_print.paint(painter, m_page);
    }

private:
    QSizeF paperSize() const { return m_print.paper() * TablePrint::kDpi * m_scale; }

    const TablePrint &m_print;
    int m_page = 0;
    double m_scale = 0.1;
};

TablePreviewDlg::TablePreviewDlg(const TablePrint &print, const QString &title, const std::function<void()> &storePdf,
                                 QWidget *parent)
    : QDialog(parent)
    , m_print(print)
    , m_page(new QSpinBox)
    , m_scale(new QComboBox)
    , m_scroll(new QScrollArea)
    , m_sheet(new Sheet(print))
{
    setObjectName(u"tablePreview"_s);
    setWindowTitle(title);
    auto *bar = new QHBoxLayout;
    addButton(*bar, u"&Print ..."_s, u"print"_s, [this] { accept(); });
    addButton(*bar, u"P&DF ..."_s, u"pdf"_s, storePdf);
    bar->addStretch();
    auto *label = new QLabel(u"Pa&ge"_s);
    label->setBuddy(m_page);
    bar->addWidget(label);
    m_page->setRange(1, print.pageCount());
    m_page->setSuffix(u" of %1"_s.arg(print.pageCount()));
    m_page->setAccessibleName(u"Page"_s);
    connect(m_page, &QSpinBox::valueChanged, this, [this](int page) { showPage(page - 1); });
    bar->addWidget(m_page);
    m_scale->addItem(u"Whole page"_s, kFitPage);
    m_scale->addItem(u"Page width"_s, kFitWidth);
    for (const int percent : {50, 75, 100, 150, 200})
        m_scale->addItem(u"%1 %"_s.arg(percent), percent);
    m_scale->setAccessibleName(u"Scale"_s);
    connect(m_scale, &QComboBox::currentIndexChanged, this, &TablePreviewDlg::applyScale);
    bar->addWidget(m_scale);
    bar->addStretch();
    bar->addWidget(makeHelpButton(*this));
    addButton(*bar, u"&Close"_s, u"close"_s, [this] { reject(); });

    m_scroll->setWidget(m_sheet);
    m_scroll->setAlignment(Qt::AlignCenter);
    m_scroll->setBackgroundRole(QPalette::Mid);
    m_scroll->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_scroll, 1);
    resize(screen()->availableSize() * 0.8);
    m_scroll->setFocus();
}

void TablePreviewDlg::addButton(QLayout &layout, const QString &text, const QString &name,
                                const std::function<void()> &pressed)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    pressWithReturn(button);
    connect(button, &QPushButton::clicked, this, pressed);
    layout.addWidget(button);
}

void TablePreviewDlg::showPage(int page)
{
    m_sheet->setPage(page);
    m_scroll->verticalScrollBar()->setValue(0);
}

void TablePreviewDlg::applyScale()
{
    const int scale = m_scale->currentData().toInt();
    const QSizeF paper = m_print.paper();
    const QSizeF room = m_scroll->maximumViewportSize() - QSize(4 * kShadow, 4 * kShadow);
    const double width = scale > 0            ? paper.width() * logicalDpiX() * scale / 100
                         : scale == kFitWidth ? room.width() - m_scroll->verticalScrollBar()->sizeHint().width()
                                              : paper.scaled(room, Qt::KeepAspectRatio).width();
    m_sheet->setPaperWidth(std::max(width, 50.0));
}

void TablePreviewDlg::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    applyScale();
}

void TablePreviewDlg::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageDown:
        m_page->stepUp();
        break;
    case Qt::Key_PageUp:
        m_page->stepDown();
        break;
    case Qt::Key_Home:
        m_page->setValue(m_page->minimum());
        break;
    case Qt::Key_End:
        m_page->setValue(m_page->maximum());
        break;
    default:
        QDialog::keyPressEvent(event);
    }
}

bool TablePreviewDlg::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    // Page Up and Down first scroll within a page that is larger than the window.
    auto *key = static_cast<QKeyEvent *>(event);
    const QScrollBar &bar = *m_scroll->verticalScrollBar();
    const bool isTurning = (key->key() == Qt::Key_PageDown && bar.value() == bar.maximum()) ||
                           (key->key() == Qt::Key_PageUp && bar.value() == bar.minimum());
    if (isTurning)
        keyPressEvent(key);
    return isTurning;
}

} // namespace tarnwick
