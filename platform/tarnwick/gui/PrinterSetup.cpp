#include "PrinterSetup.h"

#include "StateKeeper.h"

#include <QPrinter>
#include <QPrinterInfo>
#include <tarnwick/paint/Paper.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

std::unique_ptr<QPrinter> makePrinter(const QString &key, bool isLandscape)
{
    const QJsonObject kept = StateKeeper::sessionFile().values();
    const QPrinterInfo chosen = QPrinterInfo::printerInfo(kept[key + u"/printer"_s].toString());
    const QPrinterInfo info = chosen.isNull() ? QPrinterInfo::defaultPrinter() : chosen;
    auto printer = info.isNull() ? std::make_unique<QPrinter>(QPrinter::HighResolution)
                                 : std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    if (info.isNull()) {
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setPageSize(defaultPaper());
    }
    isLandscape = kept[key + u"/landscape"_s].toBool(isLandscape);
    printer->setPageOrientation(isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    const int paper = kept[key + u"/paper"_s].toInt(-1);
    if (paper >= 0 && paper < QPageSize::Custom)
        printer->setPageSize(QPageSize(QPageSize::PageSizeId(paper)));
    printer->setCreator(u"ARVO"_s);
    return printer;
}

void keepPrinter(const QPrinter &printer, const QString &key)
{
    const QPageLayout layout = printer.pageLayout();
    StateKeeper::sessionFile().store({{key + u"/paper"_s, int(layout.pageSize().id())},
                                      {key + u"/landscape"_s, layout.orientation() == QPageLayout::Landscape},
                                      {key + u"/printer"_s, printer.printerName()}});
}

} // namespace tarnwick
