#pragma once
#include <tarnwick/paint/TablePrint.h>

#include <QDialog>

class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;

namespace tarnwick {

/// Previews a table print page by page, so that the first page appears at once, however many there are. If accepted,
/// the caller prints.
class TablePreviewDlg : public QDialog
{
    Q_OBJECT
public:
    /// print must outlive the dialog. storePdf: called by the PDF button.
    TablePreviewDlg(const TablePrint &print, const QString &title, const std::function<void()> &storePdf,
                    QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

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
