#pragma once
#include <map/HeaderEditor.h>

#include <brannock/paint/MapPicture.h>
#include <tarnwick/gui/CommandActions.h>

#include <QDialog>

class QCheckBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;
class QToolButton;
class QVBoxLayout;

namespace app {

class PagePreview;

/// Dialog of the map's print header with a preview of the page. Its logic is in map::HeaderEditor.
class HeaderDlg : public QDialog
{
    Q_OBJECT
public:
    /// page: paints the page with a header. inches, dpi: size and resolution of the paper.
    HeaderDlg(map::HeaderEditor &editor, const std::function<brannock::MapPicture(const map::MapHeader &)> &page,
              const QSizeF &inches, double dpi, QWidget *parent = nullptr);

    void reject() override;

private:
    /// A font and its size.
    struct FontChoice
    {
        QFontComboBox *family;
        QSpinBox *size;
        QString map::MapHeader::*familyField;
        qint32 map::MapHeader::*sizeField;
    };

    void makeMenu(QVBoxLayout *layout);
    QWidget *makeTexts();
    QWidget *makeFooter();
    QWidget *makeMapFields();
    QWidget *makeButtons();
    QWidget *makeFont(const QString &label, const QString &name, QString map::MapHeader::*family,
                      qint32 map::MapHeader::*size);
    QPlainTextEdit *makeText(const QString &name, int lines);
    void makeKeywords(QToolButton *button);

    /// Copies the values from the editor to the widgets, and back.
    void fill(bool expanded);
    void take();
    void changed();
    void showChanges();
    void showStandard();
    void showUnknown();
    void run(const std::function<void()> &fileCommand);

    map::HeaderEditor &m_editor;
    tarnwick::CommandHandlers m_handlers;
    tarnwick::CommandActions m_actions;
    PagePreview *m_preview;
    QPlainTextEdit *m_upper = nullptr;
    QPlainTextEdit *m_lower = nullptr;
    QPlainTextEdit *m_description = nullptr;
    QLineEdit *m_prepared = nullptr;
    QLineEdit *m_checked = nullptr;
    QCheckBox *m_expand = nullptr;
    QCheckBox *m_template = nullptr;
    QToolButton *m_keywords = nullptr;
    QLabel *m_unknown = nullptr;          ///< shows words that look like keywords but are not
    QPlainTextEdit *m_lastText = nullptr; ///< field that keywords are inserted into
    QList<FontChoice> m_fonts;
    bool m_isFilling = false;
};

} // namespace app
