// Turns vector files into bitmaps and draws contact sheets, with the same renderer that the tools of the suite use. Serves
// the scripts beside it; no part of the library.
//
//   tolv_image_tool render           reads lines "SOURCE TARGET WIDTH HEIGHT" from standard input
//   tolv_image_tool sheet TARGET COLUMNS SIZE:SIZE...   reads lines "FILE TITLE" from standard input: one page with each
//                                                     file at all the sizes, on a light and on a dark ground

#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>
#include <QVector>

#include <algorithm>
#include <cstdio>

namespace
{
QStringList read_words(QTextStream& in)
{
    QString line;
    while (in.readLineInto(&line))
    {
        if (!line.trimmed().isEmpty())
            return line.split(QLatin1Char(' '));
    }
    return {};
}

bool render(const QString& source, const QString& target, const QSize& size)
{
    QSvgRenderer renderer(source);
    if (!renderer.isValid())
        return false;
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32).save(target, "PNG", 0);
}

int run_render()
{
    QTextStream in(stdin);
    for (QStringList words = read_words(in); !words.isEmpty(); words = read_words(in))
    {
        if (words.size() != 4 || !render(words[0], words[1], QSize(words[2].toInt(), words[3].toInt())))
        {
            std::fprintf(stderr, "cannot render %s\n", qPrintable(words.join(QLatin1Char(' '))));
            return 1;
        }
    }
    return 0;
}

struct SHEET_ITEM
{
    QString file;
    QString title;
};

/// One row of sizes of one icon; returns where it ends.
int paint_sizes(QPainter& painter, const QIcon& icon, int x, int y, int height, const QVector<int>& sizes)
{
    for (const int size : sizes)
    {
        painter.drawPixmap(x, y + (height - size) / 2, icon.pixmap(size, size));
        x += size + 6;
    }
    return x;
}

bool paint_sheet(const QString& target, int columns, const QVector<int>& sizes, const QVector<SHEET_ITEM>& items)
{
    const int largest = *std::max_element(sizes.begin(), sizes.end());
    int half = 6;
    for (const int size : sizes)
        half += size + 6;
    const QSize cell(std::max(2 * half, 150), largest + 26);
    const int rows = (items.size() + columns - 1) / columns;
    QImage image(cell.width() * columns, cell.height() * rows, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 7));
    for (int i = 0; i < items.size(); ++i)
    {
        const QPoint corner(i % columns * cell.width(), i / columns * cell.height());
        const QIcon icon(items[i].file);
        painter.fillRect(corner.x(), corner.y(), half, largest + 10, QColor(239, 239, 239));
        painter.fillRect(corner.x() + half, corner.y(), half, largest + 10, QColor(45, 45, 48));
        paint_sizes(painter, icon, corner.x() + 6, corner.y() + 5, largest, sizes);
        paint_sizes(painter, icon, corner.x() + half + 6, corner.y() + 5, largest, sizes);
        painter.drawText(QRect(corner.x(), corner.y() + largest + 10, cell.width(), 14), Qt::AlignLeft, items[i].title);
    }
    painter.end();
    return image.save(target);
}

int run_sheet(const QStringList& arguments)
{
    QVector<int> sizes;
    for (const QString& size : arguments[4].split(QLatin1Char(':')))
        sizes << size.toInt();
    QVector<SHEET_ITEM> items;
    QTextStream in(stdin);
    for (QStringList words = read_words(in); words.size() >= 2; words = read_words(in))
        items.append({words[0], words.mid(1).join(QLatin1Char(' '))});
    return paint_sheet(arguments[2], arguments[3].toInt(), sizes, items) ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() == 2 && arguments[1] == QLatin1String("render"))
        return run_render();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("sheet"))
        return run_sheet(arguments);
    std::fprintf(stderr, "usage: tolv_image_tool render | sheet TARGET COLUMNS SIZES\n");
    return 2;
}
