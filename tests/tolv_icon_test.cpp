#include "gui_test.h"
#include "tolv_icon.h"
#include "tolv_icon_engine.h"

#include <QFile>
#include <QImage>
#include <QPainter>

#include <map>
#include <set>

namespace
{
class TOLV_ICON_TEST : public PLAIN_GUI_TEST
{
};

/// The names of the table, in its order.
const QStringList& get_names()
{
    static const QStringList names = {
#define TOLV_ICON_ROW(enumerator, form, first_file, second_file) QStringLiteral(#enumerator),
#include "tolv_icon_table.def"
#undef TOLV_ICON_ROW
    };
    return names;
}

TOLV_ICON_ENUM to_icon(int value)
{
    return static_cast<TOLV_ICON_ENUM>(value);
}

QImage paint_icon(const QIcon& icon, int size, const QColor& ground)
{
    QImage picture(size, size, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter painter(&picture);
    icon.paint(&painter, picture.rect());
    return picture;
}

/// Whether the channels of two pictures are less than 2 of 255 apart in the mean.
bool are_alike(const QImage& a, const QImage& b)
{
    const int limit = 2 * 3 * a.width() * a.height();
    int sum = 0;
    for (int y = 0; y < a.height() && sum <= limit; ++y)
    {
        const auto* const line_a = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* const line_b = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
        {
            sum += std::abs(qRed(line_a[x]) - qRed(line_b[x])) + std::abs(qGreen(line_a[x]) - qGreen(line_b[x])) +
                   std::abs(qBlue(line_a[x]) - qBlue(line_b[x]));
        }
    }
    return sum <= limit;
}

/// How many pixels stand out from the ground, by their luminance.
int count_visible_pixels(const QImage& picture, const QColor& ground)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
            count += std::abs(qGray(picture.pixel(x, y)) - qGray(ground.rgb())) > 45 ? 1 : 0;
    }
    return count;
}
} // namespace

// ---- The table ------------------------------------------------------------------------------------------------------

TEST(TOLV_ICON_TABLE_TEST, the_values_are_the_names_in_ascii_order)
{
    ASSERT_EQ(784, TOLV_ICON_COUNT);
    ASSERT_EQ(784, get_names().size());
    EXPECT_EQ(1, TOLV_ABORT_ICON);
    EXPECT_EQ(784, TOLV_ZOOM_TOOL_ICON);
    for (int i = 1; i < get_names().size(); ++i)
        EXPECT_LT(get_names()[i - 1].toStdString(), get_names()[i].toStdString());
    for (const QString& name : get_names())
        EXPECT_TRUE(name.startsWith(QLatin1String("TOLV_")) && name.endsWith(QLatin1String("_ICON")))
            << name.toStdString();
}

TEST(TOLV_ICON_TABLE_TEST, a_name_leads_to_its_value)
{
    for (int i = 0; i < get_names().size(); ++i)
        EXPECT_EQ(i + 1, tolv_get_icon_enum(get_names()[i])) << get_names()[i].toStdString();
    EXPECT_EQ(TOLV_COPY_ICON, tolv_get_icon_enum(QStringLiteral("TOLV_COPY_ICON")));
}

TEST(TOLV_ICON_TABLE_TEST, an_unknown_name_leads_to_none)
{
    EXPECT_EQ(0, tolv_get_icon_enum(QStringLiteral("TOLV_NO_SUCH_ICON")));
    EXPECT_EQ(0, tolv_get_icon_enum(QStringLiteral("tolv_copy_icon")));
    EXPECT_EQ(0, tolv_get_icon_enum(QStringLiteral("TOLV_COPY_ICON ")));
    EXPECT_EQ(0, tolv_get_icon_enum(QStringLiteral("TOLV_ICON_NONE")));
    EXPECT_EQ(0, tolv_get_icon_enum(QString()));
}

TEST(TOLV_ICON_TABLE_TEST, all_but_three_icons_have_one_file)
{
    QStringList with_two_files;
    int vector_rows = 0;
    int bitmap_files = 0;
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
    {
        const QStringList files = tolv_get_icon_file_names(to_icon(i));
        ASSERT_FALSE(files.isEmpty());
        if (files.size() == 2)
            with_two_files << get_names()[i - 1];
        else
            EXPECT_EQ(1, files.size());
        vector_rows += files[0].endsWith(QLatin1String(".svg")) ? 1 : 0;
        for (const QString& file : files)
        {
            // No row mixes the two kinds, and there is no third one.
            EXPECT_EQ(files[0].right(4), file.right(4));
            EXPECT_TRUE(file.endsWith(QLatin1String(".svg")) || file.endsWith(QLatin1String(".png")));
            bitmap_files += file.endsWith(QLatin1String(".png")) ? 1 : 0;
        }
    }
    EXPECT_EQ((QStringList{QStringLiteral("TOLV_FLAT_PROJECT_OPEN_ICON"),
                           QStringLiteral("TOLV_PUSHPIN_DOCKWIDGET_ICON"), QStringLiteral("TOLV_PUSHPIN_ICON")}),
              with_two_files);
    EXPECT_EQ(702, vector_rows);
    EXPECT_EQ(83, bitmap_files); // one row has two
}

TEST(TOLV_ICON_TABLE_TEST, the_files_of_the_pushpins_come_with_the_one_for_up_first)
{
    EXPECT_EQ((QStringList{QStringLiteral(":/icons/svg/tolv_pushpin_up.svg"),
                           QStringLiteral(":/icons/svg/tolv_pushpin_down.svg")}),
              tolv_get_icon_file_names(TOLV_PUSHPIN_ICON));
    EXPECT_EQ((QStringList{QStringLiteral(":/icons/svg/tolv_pushpin_up_dockwidget.svg"),
                           QStringLiteral(":/icons/svg/tolv_pushpin_down_dockwidget.svg")}),
              tolv_get_icon_file_names(TOLV_PUSHPIN_DOCKWIDGET_ICON));
}

TEST(TOLV_ICON_TABLE_TEST, values_outside_the_table_have_no_files)
{
    for (const int value : {0, -1, 785, 9999})
        EXPECT_EQ(QStringList(), tolv_get_icon_file_names(to_icon(value))) << value;
    EXPECT_EQ(QStringList(QStringLiteral(":/icons/svg/tolv_copy.svg")), tolv_get_icon_file_names(TOLV_COPY_ICON));
}

TEST(TOLV_ICON_TABLE_TEST, both_forms_of_a_path_occur_and_every_file_is_there)
{
    int with_slash = 0;
    int without_slash = 0;
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
    {
        for (const QString& file : tolv_get_icon_file_names(to_icon(i)))
        {
            EXPECT_TRUE(QFile::exists(file)) << file.toStdString();
            with_slash += file.startsWith(QLatin1String(":/icons/")) ? 1 : 0;
            without_slash += file.startsWith(QLatin1String(":icons/")) ? 1 : 0;
        }
    }
    EXPECT_GT(without_slash, 0);
    EXPECT_GT(with_slash, without_slash);
    EXPECT_EQ(787, with_slash + without_slash);
}

// ---- tolv_get_icon --------------------------------------------------------------------------------------------------

TEST_F(TOLV_ICON_TEST, every_icon_but_the_empty_one_shows_something)
{
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
    {
        const QIcon icon = tolv_get_icon(to_icon(i));
        EXPECT_FALSE(icon.isNull()) << get_names()[i - 1].toStdString();
        const QPixmap pixmap = icon.pixmap(16, 16);
        EXPECT_EQ(QSize(16, 16), pixmap.size()) << get_names()[i - 1].toStdString();
        QImage blank(16, 16, QImage::Format_ARGB32_Premultiplied);
        blank.fill(Qt::transparent);
        EXPECT_EQ(i == TOLV_EMPTY_ICON, pixmap.toImage() == blank) << get_names()[i - 1].toStdString();
    }
}

TEST_F(TOLV_ICON_TEST, an_unknown_value_gives_a_null_icon_silently)
{
    for (const int value : {0, -1, 785, 9999})
        EXPECT_TRUE(tolv_get_icon(to_icon(value)).isNull()) << value;
}

TEST_F(TOLV_ICON_TEST, each_call_gives_a_copy_of_the_same_icon)
{
    EXPECT_EQ(tolv_get_icon(TOLV_COPY_ICON).cacheKey(), tolv_get_icon(TOLV_COPY_ICON).cacheKey());
    EXPECT_NE(tolv_get_icon(TOLV_COPY_ICON).cacheKey(), tolv_get_icon(TOLV_CUT_ICON).cacheKey());
}

TEST_F(TOLV_ICON_TEST, icons_of_one_file_share_its_picture)
{
    ASSERT_EQ(tolv_get_icon_file_names(TOLV_PAN_ICON), tolv_get_icon_file_names(TOLV_PAN_TOOL_ICON));
    EXPECT_EQ(tolv_get_icon(TOLV_PAN_ICON).pixmap(16, 16).cacheKey(),
              tolv_get_icon(TOLV_PAN_TOOL_ICON).pixmap(16, 16).cacheKey());
}

TEST_F(TOLV_ICON_TEST, what_is_added_to_a_copy_does_not_show_in_the_icon)
{
    const QImage before = tolv_get_icon(TOLV_COPY_ICON).pixmap(16, 16).toImage();
    QPixmap red(16, 16);
    red.fill(Qt::red);
    QIcon copy = tolv_get_icon(TOLV_COPY_ICON);
    copy.addPixmap(red);
    EXPECT_EQ(red.toImage(), copy.pixmap(16, 16).toImage().convertToFormat(red.toImage().format()));
    EXPECT_EQ(before, tolv_get_icon(TOLV_COPY_ICON).pixmap(16, 16).toImage());
}

TEST_F(TOLV_ICON_TEST, the_pushpins_are_up_when_off_and_down_when_on)
{
    for (const TOLV_ICON_ENUM pushpin : {TOLV_PUSHPIN_ICON, TOLV_PUSHPIN_DOCKWIDGET_ICON})
    {
        const QStringList files = tolv_get_icon_file_names(pushpin);
        const QIcon icon = tolv_get_icon(pushpin);
        const QImage up = QIcon(files[0]).pixmap(16, 16).toImage();
        const QImage down = QIcon(files[1]).pixmap(16, 16).toImage();
        EXPECT_NE(up, down);
        EXPECT_EQ(up, icon.pixmap(16, 16, QIcon::Normal, QIcon::Off).toImage());
        EXPECT_EQ(down, icon.pixmap(16, 16, QIcon::Normal, QIcon::On).toImage());
    }
}

TEST_F(TOLV_ICON_TEST, the_flat_icon_for_opening_a_project_has_files_for_two_sizes)
{
    const QStringList files = tolv_get_icon_file_names(TOLV_FLAT_PROJECT_OPEN_ICON);
    ASSERT_EQ(2, files.size());
    const QIcon icon = tolv_get_icon(TOLV_FLAT_PROJECT_OPEN_ICON);
    EXPECT_EQ((QList<QSize>{QSize(32, 32), QSize(48, 48)}), icon.availableSizes());
    EXPECT_EQ(QPixmap(files[0]).toImage(), icon.pixmap(32, 32).toImage());
    EXPECT_EQ(QPixmap(files[1]).toImage(), icon.pixmap(48, 48).toImage());
    EXPECT_EQ(icon.pixmap(48, 48).toImage(), icon.pixmap(48, 48, QIcon::Normal, QIcon::On).toImage());
}

// ---- What the icons look like ---------------------------------------------------------------------------------------

TEST_F(TOLV_ICON_TEST, no_two_pictures_are_alike)
{
    // By files: icons that share one are alike on purpose.
    std::map<QString, QImage> pictures;
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
    {
        const TOLV_ICON_ENUM icon = to_icon(i);
        pictures.emplace(tolv_get_icon_file_names(icon).join(QLatin1Char(' ')),
                         paint_icon(tolv_get_icon(icon), 32, Qt::white));
    }
    EXPECT_EQ(784U - 36U, pictures.size());
    for (auto first = pictures.begin(); first != pictures.end(); ++first)
    {
        for (auto second = std::next(first); second != pictures.end(); ++second)
        {
            EXPECT_FALSE(are_alike(first->second, second->second))
                << first->first.toStdString() << " and " << second->first.toStdString();
        }
    }
}

TEST_F(TOLV_ICON_TEST, every_picture_stands_out_from_light_and_dark_grounds)
{
    for (const QColor& ground : {QColor(255, 255, 255), QColor(239, 239, 239), QColor(53, 53, 53), QColor(30, 30, 30)})
    {
        for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
        {
            if (i == TOLV_EMPTY_ICON)
                continue;
            const int visible = count_visible_pixels(paint_icon(tolv_get_icon(to_icon(i)), 16, ground), ground);
            EXPECT_GE(visible, 8) << get_names()[i - 1].toStdString() << " on " << ground.name().toStdString();
        }
    }
}

// ---- File types -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_ICON_TEST, thirty_types_of_files_have_an_icon_of_their_own)
{
    const std::map<FIO_FILE_TYPE, TOLV_ICON_ENUM> expected = {
        {FIO_FILE_TYPE_VERILOG, TOLV_DESIGN_UNITS_V_ICON},
        {FIO_FILE_TYPE_SYSTEMVERILOG, TOLV_DESIGN_UNITS_SV_ICON},
        {FIO_FILE_TYPE_VERILOG_INCLUDE, TOLV_INC_FILE_ICON},
        {FIO_FILE_TYPE_VHDL, TOLV_DESIGN_UNITS_VHD_ICON},
        {FIO_FILE_TYPE_EDIF, TOLV_DESIGN_UNITS_EDIF_ICON},
        {FIO_FILE_TYPE_BLIF, TOLV_NETLIST_FILE_ICON},
        {FIO_FILE_TYPE_JSON_NETLIST, TOLV_DESIGN_UNITS_JSON_ICON},
        {FIO_FILE_TYPE_PLACED_NETLIST, TOLV_DESIGN_UNITS_PLACED_ICON},
        {FIO_FILE_TYPE_SCHEMATIC, TOLV_DESIGN_UNITS_SCHEMATIC_ICON},
        {FIO_FILE_TYPE_STATE_MACHINE, TOLV_DESIGN_UNITS_SMF_ICON},
        {FIO_FILE_TYPE_BLOCK_DIAGRAM, TOLV_DESIGN_UNITS_BDF_ICON},
        {FIO_FILE_TYPE_QUALIFIED_IP, TOLV_DESIGN_UNITS_QIP_ICON},
        {FIO_FILE_TYPE_SYSTEM_DESIGN, TOLV_DESIGN_UNITS_SYSTEM_ICON},
        {FIO_FILE_TYPE_CONSTRAINTS, TOLV_SDC_FILE_ICON},
        {FIO_FILE_TYPE_PIN_CONSTRAINTS, TOLV_PIN_FILE_ICON},
        {FIO_FILE_TYPE_TCL_SCRIPT, TOLV_TCL_FILE_ICON},
        {FIO_FILE_TYPE_SETTINGS, TOLV_SETTINGS_FILE_ICON},
        {FIO_FILE_TYPE_PROJECT, TOLV_PROJECT_FILE_ICON},
        {FIO_FILE_TYPE_MEMORY_HEX, TOLV_HEX_FILE_ICON},
        {FIO_FILE_TYPE_MEMORY_INIT, TOLV_MEMORY_INIT_FILE_ICON},
        {FIO_FILE_TYPE_WAVEFORM, TOLV_WAVEFORM_FILE_ICON},
        {FIO_FILE_TYPE_VALUE_CHANGE_DUMP, TOLV_VCD_FILE_ICON},
        {FIO_FILE_TYPE_SIGNAL_PROBE, TOLV_SIGNAL_PROBE_FILE_ICON},
        {FIO_FILE_TYPE_BITSTREAM, TOLV_BITSTREAM_FILE_ICON},
        {FIO_FILE_TYPE_PROGRAMMING, TOLV_PROGRAMMING_FILE_ICON},
        {FIO_FILE_TYPE_C_SOURCE, TOLV_C_FILE_ICON},
        {FIO_FILE_TYPE_CPP_SOURCE, TOLV_CPP_FILE_ICON},
        {FIO_FILE_TYPE_C_HEADER, TOLV_INC_FILE_ICON},
        {FIO_FILE_TYPE_CPP_HEADER, TOLV_CPP_INC_FILE_ICON},
        {FIO_FILE_TYPE_REPORT, TOLV_REPORT_FILE_ICON},
    };
    EXPECT_EQ(30U, expected.size());
    for (int type = 0; type <= FIO_FILE_TYPE_COUNT; ++type)
    {
        const auto row = expected.find(static_cast<FIO_FILE_TYPE>(type));
        const TOLV_ICON_ENUM icon = row != expected.end() ? row->second : TOLV_GENERIC_FILE_ICON;
        EXPECT_EQ(tolv_get_icon(icon).cacheKey(), tolv_get_file_type_icon(static_cast<FIO_FILE_TYPE>(type)).cacheKey())
            << "type " << type;
    }
}

// ---- TOLV_ICON_ENGINE -----------------------------------------------------------------------------------------------

TEST_F(TOLV_ICON_TEST, the_stand_by_engine_paints_nothing_and_cannot_be_copied)
{
    const QIcon icon(new TOLV_ICON_ENGINE);
    EXPECT_FALSE(icon.isNull());
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::yellow);
    const QImage before = picture;
    QPainter painter(&picture);
    icon.paint(&painter, picture.rect());
    painter.end();
    EXPECT_EQ(before, picture);
    const TOLV_ICON_ENGINE engine;
    EXPECT_EQ(nullptr, engine.clone());
}
