#pragma once
#include <memory>
#include <QByteArray>
#include <QPaintDevice>
#include <QSizeF>
#include <QString>

namespace brannock {

/// A paint device that makes an enhanced metafile (.emf) for office programs. Knows shapes, text and pictures of
/// pixels, but no clipping; transparent colours and pixels are mixed with white.
class EmfDevice : public QPaintDevice
{
public:
    /// dpi: the painter's units per inch
    EmfDevice(const QSizeF &inches, int dpi, const QString &title);
    ~EmfDevice() override;

    QPaintEngine *paintEngine() const override;
    /// The file's content, once painting has ended; empty when it could not be made.
    QByteArray bytes() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
    QSize m_size;
    int m_dpi;
};

} // namespace brannock
