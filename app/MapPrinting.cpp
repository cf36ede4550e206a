#include "MapPrinting.h"

#include "MapPreviewDlg.h"

#include <app/logic/Messages.h>

#include <tarnwick/Failures.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/PrinterSetup.h>

#include <QDir>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr int kBitmapDpi = 150;

const QString kPrinterKey = u"print"_s;

} // namespace

MapPrinting::MapPrinting(ProjectSession &session, QWidget *parent)
    : m_session(session)
    , m_parent(parent)
{
}

MapPrinting::~MapPrinting() = default;

QPrinter &MapPrinting::printer()
{
    if (m_printer)
        return *m_printer;
    // A tubesheet is about square, and the legend is beside it.
    m_printer = tarnwick::makePrinter(kPrinterKey, true);
    return *m_printer;
}

void MapPrinting::keepSetup() const
{
    const auto store = [this] { tarnwick::keepPrinter(*m_printer, kPrinterKey); };
    tarnwick::attempt(m_session.prompts(), store, {0, u""});
}

QString MapPrinting::documentName() const
{
    return m_session.map().name().isEmpty() ? m_session.project().name : m_session.map().name();
}

QSizeF MapPrinting::paperSize()
{
    return printer().pageLayout().fullRect(QPageLayout::Inch).size();
}

double MapPrinting::resolution()
{
    return printer().resolution();
}

brannock::MapPicture MapPrinting::page(const map::MapHeader &header) const
{
    const query::ArvoOptions &options = m_session.options();
    const map::MapDocument &document = m_session.map();
    brannock::PictureContent content = pageContent(header, document, options.page, m_session.printMacros());
    content.xOrientation = document.state().xOrientation;
    content.yOrientation = document.state().yOrientation;
    content.documentName = documentName();
    return mapPage(document, content, options.map, m_session.project().site.compCode);
}

bool MapPrinting::printOn(QPrinter &device, const tarnwick::Message &failure)
{
    device.setDocName(documentName());
    // The margins of the page are those of the options, measured from the edge of the paper.
    device.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&device)) {
        m_session.prompts().error(failure);
        return false;
    }
    const tarnwick::WaitCursor wait;
    const double dpi = device.resolution();
    const QRectF paper(QPointF(0, 0), device.pageLayout().fullRect(QPageLayout::Inch).size() * dpi);
    const brannock::MapPicture picture = page(m_session.map().header());
    picture.paint(painter, paper, dpi);
    for (const QList<brannock::LegendRow> &rows : picture.furtherPages(paper, dpi)) {
        if (!device.newPage())
            break;
        picture.paintFurther(painter, paper, dpi, rows);
    }
    if (painter.end())
        return true;
    m_session.prompts().error(failure);
    return false;
}

void MapPrinting::setUp()
{
    QPageSetupDialog dialog(&printer(), m_parent);
    dialog.setWindowTitle(u"Print Setup"_s);
    if (dialog.exec() == QDialog::Accepted)
        keepSetup();
}

void MapPrinting::preview()
{
    MapPreviewDlg dialog(
        printer(), [this](QPrinter &device) { printOn(device, messages::kPreviewPrinterFailed); }, m_parent);
    dialog.exec();
    keepSetup();
}

void MapPrinting::offerPdfFile()
{
    // A name chosen by the user is kept; a suggestion for another map is not.
    if (printer().outputFormat() != QPrinter::PdfFormat || printer().outputFileName() != m_offeredPdf)
        return;
    const QString name = documentName();
    const QString folder = m_session.project().pathOf(u"temp"_s);
    QDir().mkpath(folder); // if this fails, the dialog refuses the name
    m_offeredPdf = folder + u'/' + tarnwick::validFileName(name) + u".pdf"_s;
    printer().setOutputFileName(m_offeredPdf);
}

void MapPrinting::print()
{
    offerPdfFile();
    QPrintDialog dialog(&printer(), m_parent);
    dialog.setWindowTitle(u"Print Map"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    keepSetup();
    if (printer().outputFormat() == QPrinter::PdfFormat && !printer().outputFileName().isEmpty())
        printToFile(printer().outputFileName());
    else if (printOn(printer(), messages::kPrinterFailed))
        m_session.prompts().status(messages::kPrinted);
}

void MapPrinting::printToFile(const QString &chosen)
{
    const bool isPdf = chosen.endsWith(u".pdf"_s, Qt::CaseInsensitive);
    const QString file = isPdf ? chosen : QString(chosen + u".pdf"_s);
    const tarnwick::WaitCursor wait;
    const auto print = [&] {
        page(m_session.map().header()).save(file, paperSize());
        m_session.prompts().status(messages::kPrintedTo, QDir::toNativeSeparators(file));
    };
    tarnwick::attempt(m_session.prompts(), print, messages::kPrinterFailed);
}

void MapPrinting::storeMetafile()
{
    store(kMetafileChooser, u"Store Metafile"_s, messages::kStorePictureFailed);
}

void MapPrinting::storeBitmap()
{
    store(kBitmapChooser, u"Store Bitmap"_s, messages::kBitmapPrinterFailed);
}

void MapPrinting::store(const tarnwick::FileChooserInfo &chooser, const QString &title,
                        const tarnwick::Message &notMade)
{
    const QString name = m_session.map().name();
    const QString offered = name.isEmpty() ? QString() : QString(name + QString::fromUtf16(chooser.extension));
    const QString path = m_choice->saveFile(chooser, title, m_session.roots(), offered);
    if (path.isEmpty())
        return;
    const tarnwick::WaitCursor wait;
    try {
        page(m_session.map().header()).save(path, paperSize(), kBitmapDpi);
        m_session.prompts().status(messages::kStoredPicture,
                                   tarnwick::SuitePath::fromMachine(path, m_session.roots()).shown());
    } catch (const brannock::PictureError &error) {
        tarnwick::showFailure(m_session.prompts(), error, notMade);
    } catch (const tarnwick::Error &error) {
        tarnwick::showFailure(m_session.prompts(), error, messages::kStorePictureFailed);
    }
}

} // namespace app
