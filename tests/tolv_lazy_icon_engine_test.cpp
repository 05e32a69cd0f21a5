#include "gui_test.h"
#include "picture.h"
#include "test_environment.h"
#include "tolv_icon.h"
#include "tolv_lazy_icon_engine.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <memory>

namespace
{
constexpr QIcon::Mode MODES[] = {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected};
constexpr QIcon::State STATES[] = {QIcon::Off, QIcon::On};

/// The icon as Qt's own engine makes it of the row's files.
QIcon make_stock_icon(TOLV_ICON_ENUM icon)
{
    const QStringList files = tolv_get_icon_file_names(icon);
    QIcon stock;
    if (files.size() == 1)
    {
        stock.addFile(files[0]);
    }
    else if (icon == TOLV_FLAT_PROJECT_OPEN_ICON)
    {
        stock.addFile(files[0], QSize(32, 32));
        stock.addFile(files[1], QSize(48, 48));
    }
    else
    {
        stock.addFile(files[0], QSize(), QIcon::Normal, QIcon::Off);
        stock.addFile(files[1], QSize(), QIcon::Normal, QIcon::On);
    }
    return stock;
}

/// Vector files, bitmaps, and the icons with two files.
QVector<TOLV_ICON_ENUM> get_samples()
{
    return {TOLV_COPY_ICON,    TOLV_ZOOM_IN_ICON,           TOLV_MESSAGE_ERROR_ICON,     TOLV_OVERLAY_NEW_ICON,
            TOLV_PUSHPIN_ICON, TOLV_FLAT_PROJECT_OPEN_ICON, TOLV_FLAT_HOME_ICON,         TOLV_CHECK_ON_ICON,
            TOLV_EMPTY_ICON,   TOLV_MENU_DOCKWIDGET_ICON,   TOLV_PUSHPIN_DOCKWIDGET_ICON};
}

QImage paint_icon(const QIcon& icon, const QSize& size, qreal ratio, QIcon::Mode mode, QIcon::State state)
{
    QImage picture(size * ratio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    picture.fill(QColor(40, 90, 40));
    QPainter painter(&picture);
    icon.paint(&painter, QRect(QPoint(), size), Qt::AlignRight | Qt::AlignVCenter, mode, state);
    return picture;
}

QByteArray stream(const QIcon& icon, int version)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(version);
    out << icon;
    return bytes;
}

/// The key of the engine, which comes first.
QString get_streamed_key(const QByteArray& bytes)
{
    QDataStream in(bytes);
    QString key;
    in >> key;
    return key;
}

/// A picture of one colour as a file, below the test's own folder.
QString write_picture(const QString& name, const QColor& color, int size)
{
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(color);
    QString path = QString::fromStdString(TEST_ENVIRONMENT::get_folder()) + QLatin1Char('/') + name;
    EXPECT_TRUE(picture.save(path));
    return path;
}

void compare_pixmaps(const QIcon& expected, const QIcon& actual, QWindow* window)
{
    for (const QIcon::Mode mode : MODES)
    {
        for (const QIcon::State state : STATES)
        {
            for (const QSize& size : {QSize(1, 1), QSize(14, 14), QSize(16, 16), QSize(20, 16), QSize(32, 32),
                                      QSize(40, 40), QSize(48, 48), QSize(64, 64), QSize(100, 70)})
            {
                const QPixmap expected_pixmap = expected.pixmap(window, size, mode, state);
                const QPixmap actual_pixmap = actual.pixmap(window, size, mode, state);
                EXPECT_EQ(expected_pixmap.devicePixelRatio(), actual_pixmap.devicePixelRatio());
                EXPECT_EQ(expected_pixmap.toImage(), actual_pixmap.toImage());
                EXPECT_EQ(expected.actualSize(window, size, mode, state), actual.actualSize(window, size, mode, state));
            }
        }
    }
}
} // namespace

class TOLV_LAZY_ICON_ENGINE_TEST : public PLAIN_GUI_TEST
{
};

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, no_file_is_looked_at_before_the_first_use)
{
    const QString path = QString::fromStdString(TEST_ENVIRONMENT::get_folder()) + QStringLiteral("/later.png");
    QIcon icon(new TOLV_LAZY_ICON_ENGINE);
    icon.addFile(path);
    ASSERT_FALSE(QFile::exists(path));
    write_picture(QStringLiteral("later.png"), Qt::red, 16);
    EXPECT_EQ(QColor(Qt::red), icon.pixmap(16, 16).toImage().pixelColor(8, 8));
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, every_icon_of_the_table_is_painted_as_by_qt)
{
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
    {
        const auto row = static_cast<TOLV_ICON_ENUM>(i);
        const QIcon stock = make_stock_icon(row);
        const QIcon icon = tolv_get_icon(row);
        for (const QIcon::Mode mode : MODES)
        {
            const QSize size(24, 24);
            EXPECT_EQ(paint_icon(stock, size, 1, mode, QIcon::Off), paint_icon(icon, size, 1, mode, QIcon::Off)) << i;
            EXPECT_EQ(stock.pixmap(size, mode).toImage(), icon.pixmap(size, mode).toImage()) << i;
        }
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, an_icon_is_painted_as_by_qt_in_every_mode_state_size_and_density)
{
    for (const TOLV_ICON_ENUM row : get_samples())
    {
        const QIcon stock = make_stock_icon(row);
        for (const QIcon::Mode mode : MODES)
        {
            for (const QIcon::State state : STATES)
            {
                for (const QSize& size : {QSize(16, 16), QSize(15, 33), QSize(32, 32), QSize(40, 44), QSize(64, 64)})
                {
                    for (const qreal ratio : {1.0, 1.25, 2.0, 3.0})
                    {
                        EXPECT_EQ(paint_icon(stock, size, ratio, mode, state),
                                  paint_icon(tolv_get_icon(row), size, ratio, mode, state))
                            << row << " at " << size.width() << " by " << ratio;
                    }
                }
            }
        }
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, pixmaps_and_sizes_are_those_of_qt)
{
    for (const TOLV_ICON_ENUM row : get_samples())
        compare_pixmaps(make_stock_icon(row), tolv_get_icon(row), nullptr);
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, the_sizes_there_are_and_the_name_are_those_of_qt)
{
    for (const TOLV_ICON_ENUM row : get_samples())
    {
        const QIcon stock = make_stock_icon(row);
        const QIcon icon = tolv_get_icon(row);
        for (const QIcon::Mode mode : MODES)
        {
            for (const QIcon::State state : STATES)
                EXPECT_EQ(stock.availableSizes(mode, state), icon.availableSizes(mode, state)) << row;
        }
        EXPECT_EQ(stock.name(), icon.name());
        EXPECT_EQ(stock.isNull(), icon.isNull());
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, an_icon_is_streamed_as_by_qt)
{
    for (const TOLV_ICON_ENUM row : get_samples())
    {
        for (const int version : {int(QDataStream::Qt_DefaultCompiledVersion), int(QDataStream::Qt_5_0)})
        {
            const QByteArray bytes = stream(tolv_get_icon(row), version);
            const QByteArray stock_bytes = stream(make_stock_icon(row), version);
            EXPECT_EQ(stock_bytes.size(), bytes.size()) << row;
            EXPECT_EQ(get_streamed_key(stock_bytes), get_streamed_key(bytes)) << row;
            QDataStream in(bytes);
            in.setVersion(version);
            QIcon copy;
            in >> copy;
            EXPECT_TRUE(in.atEnd());
            EXPECT_EQ(QDataStream::Ok, in.status());
            EXPECT_EQ(tolv_get_icon(row).pixmap(32, 32).toImage(), copy.pixmap(32, 32).toImage()) << row;
        }
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, the_key_is_that_of_qts_engine)
{
    const QString vector_key = get_streamed_key(stream(make_stock_icon(TOLV_COPY_ICON), QDataStream::Qt_5_0));
    const QString bitmap_key = get_streamed_key(stream(make_stock_icon(TOLV_CHECK_ON_ICON), QDataStream::Qt_5_0));
    ASSERT_NE(vector_key, bitmap_key);
    TOLV_LAZY_ICON_ENGINE vector_engine;
    vector_engine.addFile(tolv_get_icon_file_names(TOLV_COPY_ICON).constFirst(), QSize(), QIcon::Normal, QIcon::Off);
    EXPECT_EQ(vector_key, vector_engine.key());
    TOLV_LAZY_ICON_ENGINE bitmap_engine;
    bitmap_engine.addFile(tolv_get_icon_file_names(TOLV_CHECK_ON_ICON).constFirst(), QSize(), QIcon::Normal,
                          QIcon::Off);
    EXPECT_EQ(bitmap_key, bitmap_engine.key());
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, two_files_are_not_looked_at_before_the_first_use_either)
{
    QIcon icon(new TOLV_LAZY_ICON_ENGINE);
    icon.addFile(write_picture(QStringLiteral("off.png"), Qt::red, 16), QSize(), QIcon::Normal, QIcon::Off);
    icon.addFile(write_picture(QStringLiteral("on.png"), Qt::red, 16), QSize(), QIcon::Normal, QIcon::On);
    write_picture(QStringLiteral("off.png"), Qt::green, 16);
    write_picture(QStringLiteral("on.png"), Qt::blue, 16);
    EXPECT_EQ(QColor(Qt::green), icon.pixmap(16, 16, QIcon::Normal, QIcon::Off).toImage().pixelColor(8, 8));
    EXPECT_EQ(QColor(Qt::blue), icon.pixmap(16, 16, QIcon::Normal, QIcon::On).toImage().pixelColor(8, 8));
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, a_missing_file_gives_an_icon_without_content)
{
    for (const QString& file : {QStringLiteral(":/icons/svg/no_such.svg"), QStringLiteral(":/icons/no_such.png")})
    {
        // Qt's own words, which its own engine says as well.
        std::unique_ptr<SCOPED_EXPECTED_WARNING> warning;
        if (file.endsWith(QLatin1String(".svg")))
            warning = std::make_unique<SCOPED_EXPECTED_WARNING>("Cannot open file ':/icons/svg/no_such.svg'");
        QIcon icon(new TOLV_LAZY_ICON_ENGINE);
        icon.addFile(file);
        QIcon stock;
        stock.addFile(file);
        EXPECT_TRUE(icon.isNull());
        EXPECT_TRUE(icon.pixmap(16, 16).isNull());
        EXPECT_EQ(stock.isNull(), icon.isNull());
        EXPECT_EQ(stock.actualSize(QSize(16, 16)), icon.actualSize(QSize(16, 16)));
        EXPECT_EQ(paint_icon(stock, QSize(16, 16), 1, QIcon::Normal, QIcon::Off),
                  paint_icon(icon, QSize(16, 16), 1, QIcon::Normal, QIcon::Off));
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, an_engine_without_files_shows_nothing)
{
    const QIcon icon(new TOLV_LAZY_ICON_ENGINE);
    EXPECT_TRUE(icon.pixmap(16, 16).isNull());
    EXPECT_TRUE(icon.isNull());
    // Others without files are not touched by what one of them is given.
    QPixmap red(16, 16);
    red.fill(Qt::red);
    QIcon changed = icon;
    changed.addPixmap(red);
    EXPECT_FALSE(changed.isNull());
    EXPECT_TRUE(icon.isNull());
    EXPECT_TRUE(QIcon(new TOLV_LAZY_ICON_ENGINE).pixmap(16, 16).isNull());
}

TEST_F(TOLV_LAZY_ICON_ENGINE_TEST, a_file_added_behind_the_first_use_counts_at_once)
{
    QIcon icon(new TOLV_LAZY_ICON_ENGINE);
    icon.addFile(write_picture(QStringLiteral("green.png"), Qt::green, 16));
    ASSERT_EQ(QColor(Qt::green), icon.pixmap(16, 16).toImage().pixelColor(8, 8));
    const QIcon copy = icon;
    icon.addFile(write_picture(QStringLiteral("cyan.png"), Qt::cyan, 16), QSize(), QIcon::Normal, QIcon::On);
    EXPECT_EQ(QColor(Qt::cyan), icon.pixmap(16, 16, QIcon::Normal, QIcon::On).toImage().pixelColor(8, 8));
    EXPECT_EQ(QColor(Qt::green), copy.pixmap(16, 16, QIcon::Normal, QIcon::On).toImage().pixelColor(8, 8));
}

// ---- A screen with two pixels per point -----------------------------------------------------------------------------

namespace
{
/// Runs on a screen of density 2 with pixmaps of that density.
class TOLV_LAZY_ICON_ENGINE_DENSE_TEST : public TOLV_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TEST::SetUp();
        TEST_APPLICATION::finish();
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
        ASSERT_NO_FATAL_FAILURE(TEST_APPLICATION::require(TEST_APPLICATION::KIND_PLAIN));
        ASSERT_EQ(2.0, qApp->devicePixelRatio());
    }

    void TearDown() override
    {
        TEST_APPLICATION::finish();
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
        TOLV_TEST::TearDown();
    }

    const SCOPED_ENVIRONMENT_VARIABLE m_scale{"QT_SCALE_FACTOR", "2"};
};
} // namespace

TEST_F(TOLV_LAZY_ICON_ENGINE_DENSE_TEST, pixmaps_have_the_density_of_the_screen_once)
{
    EXPECT_EQ(QSize(32, 32), tolv_get_icon(TOLV_COPY_ICON).pixmap(16, 16).size());
    EXPECT_EQ(2.0, tolv_get_icon(TOLV_COPY_ICON).pixmap(16, 16).devicePixelRatio());
    QWindow window;
    window.create();
    for (const TOLV_ICON_ENUM row : get_samples())
    {
        compare_pixmaps(make_stock_icon(row), tolv_get_icon(row), nullptr);
        compare_pixmaps(make_stock_icon(row), tolv_get_icon(row), &window);
    }
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
}

TEST_F(TOLV_LAZY_ICON_ENGINE_DENSE_TEST, painting_uses_the_density_of_the_device)
{
    for (const TOLV_ICON_ENUM row : get_samples())
    {
        const QIcon stock = make_stock_icon(row);
        for (const qreal ratio : {1.0, 2.0, 3.0})
        {
            const QSize size(24, 24);
            EXPECT_EQ(paint_icon(stock, size, ratio, QIcon::Normal, QIcon::Off),
                      paint_icon(tolv_get_icon(row), size, ratio, QIcon::Normal, QIcon::Off))
                << row << " by " << ratio;
        }
    }
}

TEST_F(TOLV_LAZY_ICON_ENGINE_DENSE_TEST, a_file_for_dense_screens_counts_once)
{
    const QString plain = write_picture(QStringLiteral("plain.png"), Qt::red, 16);
    const QString dense = write_picture(QStringLiteral("plain@2x.png"), Qt::blue, 32);
    const QString other = write_picture(QStringLiteral("other.png"), Qt::green, 24);
    for (const QStringList& files : {QStringList{plain, other}, QStringList{plain}, QStringList{plain, dense}})
    {
        QIcon icon(new TOLV_LAZY_ICON_ENGINE);
        QIcon stock;
        for (const QString& file : files)
        {
            icon.addFile(file);
            stock.addFile(file);
        }
        EXPECT_EQ(stock.availableSizes(), icon.availableSizes());
        EXPECT_EQ(stream(stock, QDataStream::Qt_5_0), stream(icon, QDataStream::Qt_5_0)) << files.size();
        compare_pixmaps(stock, icon, nullptr);
    }
}
