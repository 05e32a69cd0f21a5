#include "gui_test.h"
#include "internal_error_trap.h"

#include "tolv_font.h"
#include "tolv_gdi_manager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QRawFont>

namespace
{
QStringList font_files()
{
    return {"KorvexClear_Bd.ttf",           "KorvexClear_BdIt.ttf",       "KorvexClear_It.ttf",
            "KorvexClear_Rg.ttf",           "korvex-clear-headline.woff", "korvex-clear-latin-bold.woff",
            "korvex-clear-latin-lite.woff", "korvex-clear-latin.woff"};
}

QByteArray font_bytes(const QString& name)
{
    QFile file(QStringLiteral(":/fonts/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

using TOLV_GDI_FONTS_TEST = PLAIN_GUI_TEST;

TEST_F(TOLV_GDI_FONTS_TEST, lie_in_the_resources_all_eight)
{
    EXPECT_EQ(font_files(), QDir(QStringLiteral(":/fonts")).entryList(QDir::Files, QDir::Name));
    for (const QString& name : font_files())
    {
        const QByteArray bytes = font_bytes(name);
        const QByteArray signature = name.endsWith(".woff") ? QByteArray("wOFF") : QByteArray::fromHex("00010000");
        EXPECT_EQ(signature, bytes.left(4)) << name.toStdString();
    }
}

TEST_F(TOLV_GDI_FONTS_TEST, each_belongs_to_the_family)
{
    for (const QString& name : font_files())
    {
        const int id = QFontDatabase::addApplicationFontFromData(font_bytes(name));
        ASSERT_GE(id, 0) << name.toStdString();
        EXPECT_EQ(QStringLiteral("Korvex Clear"), QFontDatabase::applicationFontFamilies(id).value(0))
            << name.toStdString();
        QFontDatabase::removeApplicationFont(id);
    }
}

TEST_F(TOLV_GDI_FONTS_TEST, give_the_family_its_styles_once_loaded)
{
    EXPECT_FALSE(QFontDatabase().hasFamily(QStringLiteral("Korvex Clear")));
    tolv_load_fonts_from_resources();
    const QStringList styles = QFontDatabase().styles(QStringLiteral("Korvex Clear"));
    for (const char* style : {"Regular", "Italic", "Bold", "Bold Italic", "Headline", "Lite"})
        EXPECT_TRUE(styles.contains(QLatin1String(style))) << style << " of " << styles.join(", ").toStdString();
    tolv_remove_loaded_fonts();
    EXPECT_FALSE(QFontDatabase().hasFamily(QStringLiteral("Korvex Clear")));
}

TEST_F(TOLV_GDI_FONTS_TEST, draw_each_style_with_a_font_of_its_own)
{
    tolv_load_fonts_from_resources();
    const auto style_of = [](int weight, bool italic)
    { return QRawFont::fromFont(QFont(QStringLiteral("Korvex Clear"), 10, weight, italic)).styleName(); };
    EXPECT_EQ(QStringLiteral("Regular"), style_of(QFont::Normal, false));
    EXPECT_EQ(QStringLiteral("Bold"), style_of(QFont::Bold, false));
    EXPECT_EQ(QStringLiteral("Italic"), style_of(QFont::Normal, true));
    EXPECT_EQ(QStringLiteral("Bold Italic"), style_of(QFont::Bold, true));
    for (const char* text : {"Timing slack -0.123 ns", "Größe", "Часы", "Ωμέγα"})
        EXPECT_TRUE(QFontMetrics(QFont(QStringLiteral("Korvex Clear"), 10)).inFontUcs4(QString(text)[1].unicode()))
            << text;
    tolv_remove_loaded_fonts();
}

// ---- In the application ---------------------------------------------------------------------------------------------

using TOLV_GDI_APPLICATION_TEST = TOLV_GUI_TEST;

TEST_F(TOLV_GDI_APPLICATION_TEST, the_gui_font_is_the_familys_own)
{
    const QRawFont font = QRawFont::fromFont(*TOLV_FONT(TOLV_GUI_FONT).get_font());
    EXPECT_EQ(QStringLiteral("Korvex Clear"), font.familyName());
    EXPECT_EQ(QStringLiteral("Regular"), font.styleName());
    EXPECT_EQ(QStringLiteral("Bold"), QRawFont::fromFont(*TOLV_FONT(TOLV_GUI_BOLD_FONT).get_font()).styleName());
}

TEST(TOLV_GDI_APPLICATION_END, takes_the_drawing_resources_along)
{
    MESSAGE_WATCH::begin();
    ASSERT_NO_FATAL_FAILURE(TEST_APPLICATION::require(TEST_APPLICATION::KIND_TOLV));
    EXPECT_NE(nullptr, TOLV_GDI_MANAGER::get_instance());
    EXPECT_TRUE(QFontDatabase().hasFamily(QStringLiteral("Korvex Clear")));
    TEST_APPLICATION::finish();
    EXPECT_INTERNAL_ERROR(TOLV_GDI_MANAGER::get_instance(), "!TOLV_GDI_MANAGER::m_instance_has_been_deleted");
    MESSAGE_WATCH::end();
}
