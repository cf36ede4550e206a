#pragma once
#include "ColourChooser.h"

#include <brannock/paint/MapScene.h>
#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace brannock {

class ColourWell;
class SymbolGrid;
class SymbolSample;

/// Dialog "Choose Symbol": symbol and colour of a legend entry.
class ChooseSymbolDlg : public QDialog
{
    Q_OBJECT
public:
    /// colours must outlive the dialog. options: appearance of the map, for the sample.
    ChooseSymbolDlg(const TubeMark &mark, const MapOptions &options, ColourChooser &colours, QWidget *parent = nullptr);
    /// The current choice; the initial one if the dialog was cancelled.
    const TubeMark &mark() const { return m_mark; }

    void reject() override;

Q_SIGNALS:
    /// Emitted when another symbol or colour was selected, before the dialog is accepted.
    void markChanged(const brannock::TubeMark &mark);

private:
    QLayout *makeLeft();
    QLayout *makeRight();
    QLayout *makePalette();
    void setSymbol(ellery::Symbol symbol);
    void setColour(const QColor &colour);
    void chooseColour();
    void find(const QString &text);
    void showMark();
    void changeMark();

    const TubeMark m_before;
    TubeMark m_mark;
    ColourChooser &m_colours;
    SymbolGrid *m_grid;
    ColourWell *m_well;
    SymbolSample *m_sample;
    QLineEdit *m_find;
    QLabel *m_code;
    QLabel *m_name;
};

} // namespace brannock
