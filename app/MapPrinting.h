#pragma once
#include <app/logic/FileChoosers.h>
#include <app/logic/ProjectSession.h>
#include <app/picture/MapPage.h>

#include <memory>

class QPrinter;
class QWidget;

namespace app {

/// The map on paper and as a picture file. Every way paints the same page; what fails is said.
class MapPrinting
{
public:
    /// parent: of the dialogs.
    MapPrinting(ProjectSession &session, QWidget *parent);
    ~MapPrinting();
    MapPrinting(const MapPrinting &) = delete;
    MapPrinting &operator=(const MapPrinting &) = delete;
    void setFileChoice(tarnwick::FileChoice *choice) { m_choice = choice; }

    void setUp();
    void preview();
    void print();
    void storeMetafile();
    void storeBitmap();

    /// The page with this header in place of the map's.
    brannock::MapPicture page(const map::MapHeader &header) const;
    /// Of the paper, in inches, as it lies.
    QSizeF paperSize();
    /// Dots per inch of the printer.
    double resolution();
    /// False, said by the message, when the printer cannot be opened.
    bool printOn(QPrinter &printer, const tarnwick::Message &failure);

    /// Into a PDF file, which replaces one of that name once it is whole; the printer's own way would not notice a full
    /// disk.
    void printToFile(const QString &chosen);

private:
    /// Made when it is first needed: asking the system for printers takes time.
    QPrinter &printer();
    void keepSetup() const;
    /// The map's name, or the project's for a map without one.
    QString documentName() const;
    /// Where there is no printer, the page goes into a file: a name for it.
    void offerPdfFile();
    /// notMade: what is said when there is no picture, before any file is written.
    void store(const tarnwick::FileChooserInfo &chooser, const QString &title, const tarnwick::Message &notMade);

    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileChoice *m_choice = nullptr;
    std::unique_ptr<QPrinter> m_printer;
    QString m_offeredPdf; ///< machine path; empty before the first offer
};

} // namespace app
