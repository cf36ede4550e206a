#pragma once
#include "TablePrint.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;

namespace tarnwick {

/// Shows the pages of a table print one at a time, so that the first is there at once however many there are. Accepted
/// means: print it.
class TablePreviewDlg : public QDialog
{
    Q_OBJECT
public:
    /// The print must outlive the dialog. storePdf: carries out the PDF button.
    TablePreviewDlg(const TablePrint &print, const QString &title, const std::function<void()> &storePdf,
                    QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Sheet;
    void addButton(class QLayout &layout, const QString &text, const QString &name,
                   const std::function<void()> &pressed);
    void showPage(int page);
    void applyScale();

    const TablePrint &m_print;
    QSpinBox *m_page;
    QComboBox *m_scale;
    QScrollArea *m_scroll;
    Sheet *m_sheet;
};

} // namespace tarnwick
