#include "gui_test.h"
#include "internal_error_trap.h"
#include "tolv_image.h"

#include <QBitmap>
#include <QDir>
#include <QFile>
#include <QMovie>
#include <QPainter>
#include <QPixmapCache>

#include <memory>

namespace
{
class TOLV_IMAGES_TEST : public PLAIN_GUI_TEST
{
};

struct CURSOR_FACTS
{
    const char* bitmap;
    const char* mask;
    QPoint hot_spot;
};

const CURSOR_FACTS CURSORS[] = {
    {"tolv_zoomin_cur.png", "tolv_zoomin_cur_mask.png", QPoint(11, 11)},
    {"tolv_zoomout_cur.png", "tolv_zoomout_cur_mask.png", QPoint(11, 11)},
    {"tolv_clock_assignment_cursor.png", "tolv_clock_assignment_cursor_mask.png", QPoint(0, 0)},
    {"tolv_create_region.png", "tolv_create_region_mask.png", QPoint(0, 0)},
    {"tolv_move_cursor.png", "tolv_move_cursor_mask.png", QPoint(8, 8)},
    {"tolv_arrow_cursor.png", "tolv_arrow_cursor_mask.png", QPoint(8, 6)},
    {"tolv_forbidden_cursor.png", "tolv_forbidden_cursor_mask.png", QPoint(15, 15)},
    {"tolv_arrow_forbidden_cursor.png", "tolv_arrow_forbidden_cursor_mask.png", QPoint(4, 2)},
    {"tolv_magnifying_cur.png", "tolv_magnifying_cur_mask.png", QPoint(11, 11)},
};

/// The given files of pixmaps, by value.
const std::pair<int, const char*> PIXMAPS[] = {{1, "tolv_splash_screen.png"},
                                               {10, "tolv_documentation_url.png"},
                                               {11, "tolv_notification_center.png"},
                                               {12, "tolv_mdi_watermark.png"},
                                               {13, "tolv_welcome_screen.png"},
                                               {14, "tolv_out_of_date_watermark.png"},
                                               {15, "tolv_mwpim_cec.png"},
                                               {16, "tolv_mwpim_config.png"},
                                               {17, "tolv_web_welcome_screen.png"},
                                               {20, "tolv_tedq_error_indicator.png"},
                                               {21, "tolv_ip_upgrade_screenshot.png"},
                                               {22, "tolv_korvex_logo.svg"}};

QString to_cursor_path(const char* file)
{
    return QStringLiteral(":/cursors/") + QLatin1String(file);
}

/// Whether a pixel of a bitmap is set.
bool is_set(const QBitmap& bitmap, const QPoint& place)
{
    return qGray(bitmap.toImage().convertToFormat(QImage::Format_RGB32).pixel(place)) < 128;
}

int count_files(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files).size();
}
} // namespace

// ---- The resource tree ----------------------------------------------------------------------------------------------

TEST_F(TOLV_IMAGES_TEST, the_folders_hold_their_numbers_of_files)
{
    EXPECT_EQ(657, count_files(QStringLiteral(":/icons/svg")));
    EXPECT_EQ(13, count_files(QStringLiteral(":/icons/flat")));
    EXPECT_EQ(121, count_files(QStringLiteral(":/icons")));
    EXPECT_EQ(22, count_files(QStringLiteral(":/pixmaps")));
    EXPECT_EQ(18, count_files(QStringLiteral(":/cursors")));
    EXPECT_EQ(2, count_files(QStringLiteral(":/movies")));
    EXPECT_EQ(8, count_files(QStringLiteral(":/fonts")));
}

TEST_F(TOLV_IMAGES_TEST, file_names_begin_alike_and_end_by_their_folder)
{
    for (const QString& name : QDir(QStringLiteral(":/icons/svg")).entryList(QDir::Files))
        EXPECT_TRUE(name.startsWith(QLatin1String("tolv_")) && name.endsWith(QLatin1String(".svg")))
            << name.toStdString();
    for (const QString& folder : {QStringLiteral(":/icons"), QStringLiteral(":/cursors")})
    {
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            EXPECT_TRUE(name.startsWith(QLatin1String("tolv_")) && name.endsWith(QLatin1String(".png")))
                << name.toStdString();
    }
}

TEST_F(TOLV_IMAGES_TEST, pictures_that_are_reached_by_their_paths_are_there)
{
    for (const char* path :
         {":icons/tolv_beta.png", ":/icons/tolv_norvane_big.png", ":/icons/svg/tolv_norvane_big.svg",
          ":/icons/svg/tolv_filter.svg", ":/icons/svg/tolv_gray_x.svg", ":/icons/svg/tolv_help.svg",
          ":/icons/svg/tolv_empty.svg", ":/icons/svg/tolv_menu_dockwidget.svg",
          ":/icons/svg/tolv_search_dockwidget.svg", ":/icons/svg/tolv_float_dockwidget.svg",
          ":/icons/svg/tolv_pushpin_up_dockwidget.svg", ":/icons/svg/tolv_pushpin_down_dockwidget.svg"})
        EXPECT_FALSE(QPixmap(QLatin1String(path)).isNull()) << path;
}

TEST_F(TOLV_IMAGES_TEST, the_tile_of_a_beta_repeats_without_a_seam)
{
    const QImage tile = QPixmap(QStringLiteral(":icons/tolv_beta.png")).toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(tile.isNull());
    // Across its edges the picture changes no more than within.
    const int size = tile.width();
    ASSERT_EQ(size, tile.height());
    const auto get_change = [&](int column)
    {
        int change = 0;
        for (int i = 0; i < size; ++i)
        {
            change += std::abs(qGray(tile.pixel(column, i)) - qGray(tile.pixel((column + 1) % size, i)));
            change += std::abs(qGray(tile.pixel(i, column)) - qGray(tile.pixel(i, (column + 1) % size)));
        }
        return change;
    };
    int greatest = 0;
    for (int i = 0; i < size - 1; ++i)
        greatest = std::max(greatest, get_change(i));
    EXPECT_GT(greatest, 0);
    EXPECT_LE(get_change(size - 1), greatest);
}

// ---- Cursors --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_IMAGES_TEST, a_cursor_has_its_bitmap_its_mask_and_its_hot_spot)
{
    int value = 0;
    for (const CURSOR_FACTS& facts : CURSORS)
    {
        const QCursor cursor = tolv_get_cursor(static_cast<TOLV_CURSOR_ENUM>(++value));
        EXPECT_EQ(Qt::BitmapCursor, cursor.shape()) << facts.bitmap;
        EXPECT_EQ(facts.hot_spot, cursor.hotSpot()) << facts.bitmap;
        const QBitmap bitmap(to_cursor_path(facts.bitmap));
        const QBitmap mask(to_cursor_path(facts.mask));
        ASSERT_EQ(QSize(32, 32), bitmap.size()) << facts.bitmap;
        EXPECT_EQ(bitmap.toImage(), cursor.bitmap(Qt::ReturnByValue).toImage()) << facts.bitmap;
        EXPECT_EQ(mask.toImage(), cursor.mask(Qt::ReturnByValue).toImage()) << facts.bitmap;
        EXPECT_NE(bitmap.toImage(), mask.toImage()) << facts.bitmap;
    }
    EXPECT_EQ(TOLV_CURSOR_COUNT, value);
}

TEST_F(TOLV_IMAGES_TEST, a_cursor_is_made_anew_each_time)
{
    for (int value = 1; value <= TOLV_CURSOR_COUNT; ++value)
    {
        const auto cursor = static_cast<TOLV_CURSOR_ENUM>(value);
        const QCursor first = tolv_get_cursor(cursor);
        QPixmapCache::clear(); // Qt's own, of files
        const QCursor second = tolv_get_cursor(cursor);
        // Cursors are equal that have the same pictures; those of the second one were read anew.
        EXPECT_EQ(first, QCursor(first));
        EXPECT_NE(first, second) << value;
        EXPECT_EQ(first.bitmap(Qt::ReturnByValue).toImage(), second.bitmap(Qt::ReturnByValue).toImage());
    }
}

TEST_F(TOLV_IMAGES_TEST, a_cursor_is_opaque_at_its_hot_spot)
{
    for (const CURSOR_FACTS& facts : CURSORS)
        EXPECT_TRUE(is_set(QBitmap(to_cursor_path(facts.mask)), facts.hot_spot)) << facts.mask;
}

TEST_F(TOLV_IMAGES_TEST, nothing_of_a_cursor_lies_outside_its_mask)
{
    for (const CURSOR_FACTS& facts : CURSORS)
    {
        const QBitmap bitmap(to_cursor_path(facts.bitmap));
        const QBitmap mask(to_cursor_path(facts.mask));
        for (int y = 0; y < 32; ++y)
        {
            for (int x = 0; x < 32; ++x)
                EXPECT_FALSE(is_set(bitmap, QPoint(x, y)) && !is_set(mask, QPoint(x, y))) << facts.bitmap;
        }
    }
}

TEST_F(TOLV_IMAGES_TEST, an_illegal_cursor_is_an_internal_error)
{
    for (const int value : {0, -1, 10, 9999})
        EXPECT_INTERNAL_ERROR(tolv_get_cursor(static_cast<TOLV_CURSOR_ENUM>(value)), "Invalid cursor type");
}

// ---- Pixmaps --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_IMAGES_TEST, a_pixmap_is_that_of_its_file)
{
    for (const auto& [value, file] : PIXMAPS)
    {
        const QPixmap pixmap = tolv_get_pixmap(static_cast<TOLV_PIXMAP_ENUM>(value));
        ASSERT_FALSE(pixmap.isNull()) << file;
        EXPECT_EQ(QPixmap(QStringLiteral(":/pixmaps/") + QLatin1String(file)).toImage(), pixmap.toImage()) << file;
    }
}

TEST_F(TOLV_IMAGES_TEST, every_pixmap_has_a_picture_of_its_own)
{
    QList<QImage> pictures;
    for (int value = 1; value <= 22; ++value)
    {
        const QImage picture = tolv_get_pixmap(static_cast<TOLV_PIXMAP_ENUM>(value)).toImage();
        EXPECT_FALSE(picture.isNull()) << value;
        EXPECT_FALSE(pictures.contains(picture)) << value;
        pictures << picture;
    }
}

TEST_F(TOLV_IMAGES_TEST, a_pixmap_is_read_anew_each_time)
{
    QPixmap pixmap = tolv_get_pixmap(TOLV_TEDQ_ERROR_INDICATOR_PIXMAP);
    const QImage before = pixmap.toImage();
    QPainter painter(&pixmap);
    painter.fillRect(pixmap.rect(), Qt::green);
    painter.end();
    EXPECT_EQ(before, tolv_get_pixmap(TOLV_TEDQ_ERROR_INDICATOR_PIXMAP).toImage());
}

TEST_F(TOLV_IMAGES_TEST, an_illegal_pixmap_is_an_internal_error_with_its_place)
{
    for (const int value : {0, -1, 23, 9999})
    {
        const TRAPPED_INTERNAL_ERROR error =
            CATCH_INTERNAL_ERROR(tolv_get_pixmap(static_cast<TOLV_PIXMAP_ENUM>(value)));
        EXPECT_EQ("Invalid pixmap type", error.text);
        EXPECT_EQ("TOLV", error.tag);
        EXPECT_EQ("tolv_global", error.file);
        EXPECT_EQ(285, error.line);
    }
}

// ---- Movies ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_IMAGES_TEST, a_movie_plays_its_file_without_end)
{
    const std::pair<TOLV_MOVIE_ENUM, const char*> movies[] = {
        {TOLV_BUSY_SPINNER_MOVIE, ":/movies/tolv_busy_spinner.gif"},
        {TOLV_IP_RGENWHEEL_MOVIE, ":/movies/tolv_ip_rgenwheel.gif"}};
    for (const auto& [value, file] : movies)
    {
        const std::unique_ptr<QMovie> movie(tolv_get_movie(value));
        ASSERT_NE(nullptr, movie);
        EXPECT_EQ(QLatin1String(file), movie->fileName());
        EXPECT_EQ(nullptr, movie->parent());
        EXPECT_EQ(QMovie::NotRunning, movie->state());
        EXPECT_TRUE(movie->isValid());
        ASSERT_EQ(12, movie->frameCount()) << file;
        EXPECT_EQ(-1, movie->loopCount());
        QImage previous;
        for (int frame = 0; frame < movie->frameCount(); ++frame)
        {
            ASSERT_TRUE(movie->jumpToFrame(frame)) << movie->lastError();
            EXPECT_NE(previous, movie->currentImage()) << frame;
            EXPECT_EQ(0, qAlpha(movie->currentImage().pixel(0, 0))) << frame;
            EXPECT_LT(0, movie->nextFrameDelay());
            EXPECT_GE(100, movie->nextFrameDelay());
            previous = movie->currentImage();
        }
    }
}

TEST_F(TOLV_IMAGES_TEST, each_movie_is_a_new_object)
{
    const std::unique_ptr<QMovie> first(tolv_get_movie(TOLV_BUSY_SPINNER_MOVIE));
    const std::unique_ptr<QMovie> second(tolv_get_movie(TOLV_BUSY_SPINNER_MOVIE));
    EXPECT_NE(first, second);
}

TEST_F(TOLV_IMAGES_TEST, an_illegal_movie_is_an_internal_error)
{
    for (const int value : {0, -1, 3, 9999})
        EXPECT_INTERNAL_ERROR(tolv_get_movie(static_cast<TOLV_MOVIE_ENUM>(value)), "Invalid movie type");
}
