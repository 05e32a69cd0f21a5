#pragma once

#include <QBrush>
#include <QFont>
#include <QPaintDevice>
#include <QPen>
#include <QRectF>
#include <QStringList>
#include <QTransform>
#include <QVector>

#include <memory>

/// One thing that a painter drew, with the state in which it did.
struct PAINT_COMMAND
{
    /// The command in the coordinates that the caller used; numbers without needless zeros:
    ///     "rect 10 20 30 40" (x, y, width, height), "line 0 0 10 10", "point 3 4", "ellipse 0 0 8 8",
    ///     "polygon 0,0 10,0 5,8", "polyline 0,0 10,0 5,8", "path M0,0 L10,0 C1,2 3,4 5,6 Z",
    ///     "text 5 15 "clk"", "pixmap 16x16 at 0 0 16 16", "image 16x16 at 0 0 16 16", "tiled pixmap 8x8 at 0 0 64 64"
    QString text;
    QPen pen;
    QBrush brush;
    QFont font;
    QTransform transform;
    qreal opacity = 1.0;
    QRectF clip; ///< bounds of the clip in the caller's coordinates; null for none
};

/// A paint device that draws nothing and remembers what a painter was told to draw: for tests of what a paint draws
/// where pixels would only say that it looks the same.
class RECORDING_PAINT_DEVICE : public QPaintDevice
{
public:
    /// A device of that many pixels at 96 dots per inch.
    explicit RECORDING_PAINT_DEVICE(const QSize& size = QSize(800, 600));
    ~RECORDING_PAINT_DEVICE() override;

    QPaintEngine* paintEngine() const override;

    /// All commands, in the order of drawing.
    const QVector<PAINT_COMMAND>& get_commands() const;
    /// Their texts.
    QStringList get_texts() const;
    /// The commands whose text begins so.
    QVector<PAINT_COMMAND> find(const QString& beginning) const;
    /// Whether there is a command with this very text.
    bool contains(const QString& text) const;
    void clear();

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class ENGINE;
    QSize m_size;
    std::unique_ptr<ENGINE> m_engine;
};
