#pragma once
#include <brannock/paint/MapPicture.h>

#include <functional>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

namespace app {

/// Small picture of a printed page. Follows changes after a short delay, so that typing is not slowed.
class PagePreview : public QWidget
{
    Q_OBJECT
public:
    /// inches: size of the paper. dpi: resolution of the printer, which determines font sizes and line breaks.
    PagePreview(std::function<brannock::MapPicture()> page, const QSizeF &inches, double dpi,
                QWidget *parent = nullptr);
    void pageChanged() { m_delay.start(); }

    QSize sizeHint() const override { return QSize(460, 380); }
    QSize minimumSizeHint() const override { return QSize(220, 180); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void renew();

    std::function<brannock::MapPicture()> m_page;
    QSizeF m_inches;
    double m_dpi;
    QTimer m_delay;
    QPixmap m_picture;
};

} // namespace app
