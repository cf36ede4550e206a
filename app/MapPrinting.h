#pragma once
#include <app/logic/FileChoosers.h>
#include <app/logic/ProjectSession.h>
#include <app/picture/MapPage.h>

#include <memory>

class QPrinter;
class QWidget;

namespace app {

/// Prints the map and stores it as a picture. All ways paint the same page, and report failures.
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

    /// The page with this header instead of the map's.
    brannock::MapPicture page(const map::MapHeader &header) const;
    /// Size of the paper in inches, in its orientation.
    QSizeF paperSize();
    /// Resolution of the printer in dots per inch.
    double resolution();
    /// Returns false after reporting failure if the printer cannot be opened.
    bool printOn(QPrinter &printer, const tarnwick::Message &failure);

    /// Writes a PDF file and replaces an existing file only when it is complete. Printing through QPrinter would not
    /// detect a full disk.
    void printToFile(const QString &chosen);

private:
    /// Created on first use, because querying the printers of the system takes time.
    QPrinter &printer();
    void keepSetup() const;
    /// Name of the map, or of the project if the map has no name.
    QString documentName() const;
    /// Asks for a file name if there is no printer.
    void offerPdfFile();
    /// notMade: message if no picture can be made, before a file is written.
    void store(const tarnwick::FileChooserInfo &chooser, const QString &title, const tarnwick::Message &notMade);

    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileChoice *m_choice = nullptr;
    std::unique_ptr<QPrinter> m_printer;
    QString m_offeredPdf; ///< machine path; empty before the first offer
};

} // namespace app
