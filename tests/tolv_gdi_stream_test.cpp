#include "tolv_gdi_fixture.h"

#include "child_process.h"
#include "tolv_brush.h"
#include "tolv_font.h"
#include "tolv_pen.h"

#include <QDataStream>
#include <QImage>

#include <random>

#if defined(__SANITIZE_ADDRESS__)
/// Lets a request for too much memory fail as it does elsewhere, instead of ending the process.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() // NOLINT: the sanitizer's name
{
    return "allocator_may_return_null=1";
}
#endif

using TOLV_GDI_STREAM_TEST = GDI_TEST;

namespace
{
template <class VALUE>
QByteArray write(const VALUE& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    value.operator<<(stream);
    return bytes;
}

template <class VALUE>
QDataStream::Status read(const QByteArray& bytes, VALUE& value)
{
    QDataStream stream(bytes);
    value.operator>>(stream);
    return stream.status();
}

/// A stream with these values one after the other.
template <class... VALUES>
QByteArray bytes_of(const VALUES&... values)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    (stream << ... << values);
    return bytes;
}

/// A stream that ends anywhere before its end leaves the object as it is.
template <class VALUE>
void expect_cut_streams_change_nothing(const VALUE& written, const VALUE& target)
{
    const QByteArray bytes = write(written);
    for (int size = 0; size < bytes.size(); ++size)
    {
        VALUE value(target);
        EXPECT_NE(QDataStream::Ok, read(bytes.left(size), value)) << size;
        EXPECT_TRUE(value == target) << size;
    }
    VALUE value(target);
    EXPECT_EQ(QDataStream::Ok, read(bytes, value));
    EXPECT_FALSE(value == target);
}

QPen some_pen()
{
    return QPen(QColor(1, 2, 3), 4, Qt::DashLine, Qt::RoundCap, Qt::BevelJoin);
}
constexpr int FORMAT = 1;
} // namespace

TEST_F(TOLV_GDI_STREAM_TEST, a_color_is_format_resource_value)
{
    EXPECT_EQ(bytes_of(FORMAT, 0, QColor(1, 2, 3, 4)), write(TOLV_COLOR(QColor(1, 2, 3, 4))));
    EXPECT_EQ(bytes_of(FORMAT, 5, QColor()), write(TOLV_COLOR(TOLV_RED_COLOR)));
    EXPECT_EQ(QByteArray::fromHex("00000001"), write(TOLV_COLOR(TOLV_RED_COLOR)).left(4));
}

TEST_F(TOLV_GDI_STREAM_TEST, colors_read_as_written)
{
    TOLV_COLOR color(Qt::blue);
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_COLOR(TOLV_RED_COLOR)), color));
    EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR), color);
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_COLOR(QColor(1, 2, 3, 4))), color));
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3, 4)), color);
    expect_cut_streams_change_nothing(TOLV_COLOR(QColor(1, 2, 3)), TOLV_COLOR(TOLV_RED_COLOR));
}

TEST_F(TOLV_GDI_STREAM_TEST, a_pen_is_format_resource_flag_pen_color)
{
    EXPECT_EQ(bytes_of(FORMAT, 0, 1, some_pen()) + write(TOLV_COLOR(QColor(1, 2, 3))), write(TOLV_PEN(some_pen())));
    EXPECT_EQ(bytes_of(FORMAT, 5, 1, *manager().get_pen(TOLV_RED_PEN)) + write(TOLV_COLOR(TOLV_WINDOW_TEXT_COLOR)),
              write(TOLV_PEN(TOLV_RED_PEN)));
}

TEST_F(TOLV_GDI_STREAM_TEST, custom_pens_read_as_written_into_the_shared_pen)
{
    TOLV_PEN pen(TOLV_RED_PEN);
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_PEN(some_pen())), pen));
    EXPECT_EQ(TOLV_PEN(some_pen()), pen);
    EXPECT_EQ(TOLV_PEN(some_pen()).get_pen(), pen.get_pen());
    expect_cut_streams_change_nothing(TOLV_PEN(some_pen()), TOLV_PEN(TOLV_RED_PEN));
}

TEST_F(TOLV_GDI_STREAM_TEST, a_named_pen_that_is_read_keeps_the_pointer_that_was_there)
{
    TOLV_PEN pen(some_pen());
    QPen* const pointer = pen.get_pen();
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_PEN(TOLV_WAVE_EVENT_PEN)), pen));
    EXPECT_EQ(TOLV_WAVE_EVENT_PEN, pen.get_pen_resource());
    EXPECT_EQ(pointer, pen.get_pen());
    EXPECT_EQ(2, pen.get_width()); // the getters look at the table
    EXPECT_EQ(TOLV_COLOR(TOLV_WAVE_EVENT_LINE_COLOR), pen.get_color());
    pen.set_pen(pen.get_pen_resource());
    EXPECT_EQ(manager().get_pen(TOLV_WAVE_EVENT_PEN), pen.get_pen());
}

TEST_F(TOLV_GDI_STREAM_TEST, a_pen_without_one_in_the_stream_keeps_its_own)
{
    TOLV_PEN pen(some_pen());
    QPen* const pointer = pen.get_pen();
    EXPECT_EQ(QDataStream::Ok, read(bytes_of(FORMAT, 0, 0) + write(TOLV_COLOR(TOLV_GREEN_COLOR)), pen));
    EXPECT_EQ(pointer, pen.get_pen());
    EXPECT_EQ(TOLV_COLOR(TOLV_GREEN_COLOR), pen.get_color());
}

TEST_F(TOLV_GDI_STREAM_TEST, a_brush_is_format_resource_color)
{
    EXPECT_EQ(bytes_of(FORMAT, 0) + write(TOLV_COLOR(QColor(1, 2, 3))),
              write(TOLV_BRUSH(QBrush(QColor(1, 2, 3), Qt::Dense4Pattern))));
    EXPECT_EQ(bytes_of(FORMAT, 5) + write(TOLV_COLOR(TOLV_WINDOW_TEXT_COLOR)), write(TOLV_BRUSH(TOLV_RED_BRUSH)));
}

TEST_F(TOLV_GDI_STREAM_TEST, a_brush_that_was_read_has_no_pointer_until_it_is_set)
{
    TOLV_BRUSH brush(TOLV_BLUE_BRUSH);
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_BRUSH(QBrush(QColor(1, 2, 3)))), brush));
    EXPECT_EQ(nullptr, brush.get_brush());
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3)), brush.get_color());
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_BRUSH(TOLV_RED_BRUSH)), brush));
    EXPECT_EQ(nullptr, brush.get_brush()); // even for a named one
    EXPECT_EQ(TOLV_RED_BRUSH, brush.get_brush_resource());
    EXPECT_EQ(Qt::SolidPattern, brush.get_style());
    brush.set_brush(brush.get_brush_resource());
    EXPECT_EQ(manager().get_brush(TOLV_RED_BRUSH), brush.get_brush());
    expect_cut_streams_change_nothing(TOLV_BRUSH(TOLV_BLUE_BRUSH), TOLV_BRUSH(TOLV_RED_BRUSH));
}

TEST_F(TOLV_GDI_STREAM_TEST, a_font_is_format_resource_flag_font_colors)
{
    const TOLV_FONT named(TOLV_GUI_FONT);
    EXPECT_EQ(bytes_of(FORMAT, 1, 1, *named.get_font()) + write(TOLV_COLOR(TOLV_WINDOW_TEXT_COLOR)) +
                  write(TOLV_COLOR(TOLV_WINDOW_TEXT_COLOR)),
              write(named));
    TOLV_FONT custom(TOLV_GUI_FONT);
    custom.set_background_color(TOLV_COLOR(QColor(4, 5, 6)));
    EXPECT_EQ(bytes_of(FORMAT, 0, 1, *custom.get_font()) + write(TOLV_COLOR(TOLV_WINDOW_TEXT_COLOR)) +
                  write(TOLV_COLOR(QColor(4, 5, 6))),
              write(custom));
}

TEST_F(TOLV_GDI_STREAM_TEST, fonts_read_into_a_font_of_their_own)
{
    TOLV_FONT written(TOLV_GUI_FONT);
    written.set_font(QColor(1, 2, 3), QColor(4, 5, 6), QString::fromUtf8("Größe Sans"), 17, true, true);
    TOLV_FONT font(TOLV_TXED_TEXT_FONT);
    EXPECT_EQ(QDataStream::Ok, read(write(written), font));
    EXPECT_EQ(written, font);
    EXPECT_NE(written.get_font(), font.get_font()); // neither shared nor freed by anybody
    const QFont* const pointer = font.get_font();
    {
        const TOLV_FONT copy(font); // NOLINT(performance-unnecessary-copy-initialization): its end is what is tested
        EXPECT_EQ(pointer, copy.get_font());
    }
    EXPECT_EQ(17, pointer->pointSize());
    EXPECT_EQ(QDataStream::Ok, read(write(TOLV_FONT(TOLV_TXED_TEXT_FONT)), font));
    EXPECT_EQ(TOLV_TXED_TEXT_FONT, font.get_font_resource());
    EXPECT_NE(manager().get_font(TOLV_TXED_TEXT_FONT, nullptr, nullptr), font.get_font());
    EXPECT_EQ(*manager().get_font(TOLV_TXED_TEXT_FONT, nullptr, nullptr), *font.get_font());
    expect_cut_streams_change_nothing(written, TOLV_FONT(TOLV_GUI_BOLD_FONT));
}

TEST_F(TOLV_GDI_STREAM_TEST, a_font_without_one_in_the_stream_keeps_its_own)
{
    TOLV_FONT font(TOLV_GUI_FONT);
    QFont* const pointer = font.get_font();
    const QByteArray colors = write(TOLV_COLOR(TOLV_RED_COLOR)) + write(TOLV_COLOR(TOLV_BLUE_COLOR));
    EXPECT_EQ(QDataStream::Ok, read(bytes_of(FORMAT, 0, 0) + colors, font));
    EXPECT_EQ(pointer, font.get_font());
    EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR), font.get_text_color());
    EXPECT_EQ(TOLV_COLOR(TOLV_BLUE_COLOR), font.get_background_color());
}

TEST_F(TOLV_GDI_STREAM_TEST, the_version_of_the_stream_is_the_callers)
{
    TOLV_FONT written(TOLV_GUI_FONT);
    written.set_point_size(17);
    for (const int version : {QDataStream::Qt_4_0, QDataStream::Qt_5_0, QDataStream::Qt_5_15})
    {
        QByteArray bytes;
        QDataStream writer(&bytes, QIODevice::WriteOnly);
        writer.setVersion(version);
        writer << written << TOLV_PEN(some_pen()) << TOLV_BRUSH(TOLV_RED_BRUSH) << TOLV_COLOR(TOLV_BLUE_COLOR);
        EXPECT_EQ(version, writer.version());
        QDataStream reader(bytes);
        reader.setVersion(version);
        TOLV_FONT font(TOLV_GUI_FONT);
        TOLV_PEN pen(TOLV_RED_PEN);
        TOLV_BRUSH brush(TOLV_BLUE_BRUSH);
        TOLV_COLOR color(TOLV_RED_COLOR);
        reader >> font >> pen >> brush >> color;
        EXPECT_EQ(QDataStream::Ok, reader.status());
        EXPECT_TRUE(reader.atEnd());
        EXPECT_EQ(17, font.get_point_size());
        EXPECT_EQ(4, pen.get_width());
        EXPECT_EQ(TOLV_RED_BRUSH, brush.get_brush_resource());
        EXPECT_EQ(TOLV_COLOR(TOLV_BLUE_COLOR), color);
    }
}

TEST_F(TOLV_GDI_STREAM_TEST, another_format_is_an_internal_error)
{
    for (const int format : {0, 2, -1, 0x01000000})
    {
        const QByteArray bytes = bytes_of(format, 0, 0) + QByteArray(100, '\0');
        EXPECT_INTERNAL_ERROR(TOLV_COLOR color(Qt::red); read(bytes, color), "Error in TOLV_COLOR::operator >>");
        EXPECT_INTERNAL_ERROR(TOLV_BRUSH brush(TOLV_RED_BRUSH); read(bytes, brush), "Error in TOLV_BRUSH::operator >>");
        EXPECT_INTERNAL_ERROR(TOLV_PEN pen(TOLV_RED_PEN); read(bytes, pen), "Error at TOLV_PEN::operator >>");
        EXPECT_INTERNAL_ERROR(TOLV_FONT font(TOLV_GUI_FONT); read(bytes, font), "Error at TOLV_FONT::operator >>");
    }
}

TEST_F(TOLV_GDI_STREAM_TEST, another_format_of_the_color_inside_is_the_colors_error)
{
    const QByteArray bytes = bytes_of(FORMAT, 5, 2);
    EXPECT_INTERNAL_ERROR(TOLV_BRUSH brush(TOLV_RED_BRUSH); read(bytes, brush), "Error in TOLV_COLOR::operator >>");
}

TEST_F(TOLV_GDI_STREAM_TEST, resources_of_no_row_are_corrupt_data)
{
    for (const int number : {-1, 89, 100000})
    {
        TOLV_COLOR color(TOLV_RED_COLOR);
        EXPECT_EQ(QDataStream::ReadCorruptData, read(bytes_of(FORMAT, number, QColor()), color));
        EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR), color);
    }
    const QByteArray some_color = write(TOLV_COLOR(TOLV_BLUE_COLOR));
    TOLV_PEN pen(TOLV_RED_PEN);
    EXPECT_EQ(QDataStream::ReadCorruptData, read(bytes_of(FORMAT, 9999, 0) + some_color, pen));
    EXPECT_EQ(TOLV_PEN(TOLV_RED_PEN), pen);
    TOLV_BRUSH brush(TOLV_RED_BRUSH);
    EXPECT_EQ(QDataStream::ReadCorruptData, read(bytes_of(FORMAT, 9999) + some_color, brush));
    EXPECT_NE(nullptr, brush.get_brush());
    TOLV_FONT font(TOLV_GUI_FONT);
    EXPECT_EQ(QDataStream::ReadCorruptData, read(bytes_of(FORMAT, 9999, 0) + some_color + some_color, font));
    EXPECT_EQ(TOLV_FONT(TOLV_GUI_FONT), font);
    EXPECT_EQ(QDataStream::ReadCorruptData, read(bytes_of(FORMAT, 5) + bytes_of(FORMAT, 9999, QColor()), brush));
    EXPECT_EQ(TOLV_BRUSH(TOLV_RED_BRUSH), brush);
}

TEST_F(TOLV_GDI_STREAM_TEST, pens_that_no_pen_of_ours_is_are_corrupt_data)
{
    QPen textured = some_pen();
    textured.setBrush(QImage(2, 2, QImage::Format_RGB32));
    QPen gradient = some_pen();
    gradient.setBrush(QLinearGradient(0, 0, 1, 1));
    QPen hatched = some_pen();
    hatched.setBrush(QBrush(QColor(1, 2, 3), Qt::DiagCrossPattern));
    QPen dashed_64 = some_pen();
    dashed_64.setDashPattern(QVector<qreal>(64, 1.0));
    QPen dashed_66 = some_pen();
    dashed_66.setDashPattern(QVector<qreal>(66, 1.0));
    for (const auto& [source, expected] :
         {std::pair(textured, QDataStream::ReadCorruptData), std::pair(gradient, QDataStream::ReadCorruptData),
          std::pair(dashed_66, QDataStream::ReadCorruptData), std::pair(hatched, QDataStream::Ok),
          std::pair(dashed_64, QDataStream::Ok)})
    {
        TOLV_PEN pen(TOLV_RED_PEN);
        EXPECT_EQ(expected, read(bytes_of(FORMAT, 0, 1, source) + write(TOLV_COLOR(QColor(1, 2, 3))), pen));
        EXPECT_EQ(expected == QDataStream::Ok ? TOLV_MIN_PEN : TOLV_RED_PEN, pen.get_pen_resource());
    }
}

TEST_F(TOLV_GDI_STREAM_TEST, damaged_streams_do_no_harm)
{
    TOLV_FONT custom_font(TOLV_GUI_FONT);
    custom_font.set_point_size(17);
    const INTERNAL_ERROR_TRAP trap; // a damaged format is one
    std::mt19937 random(11);        // the same damages in every run
    const auto read_damaged = [&random](const auto& written, auto value)
    {
        QByteArray bytes = write(written);
        for (unsigned i = 0, count = 1 + random() % 3; i < count; ++i)
        {
            const char values[] = {static_cast<char>(random()), static_cast<char>(random() % 32), '\x7f', '\xff'};
            bytes[4 + static_cast<int>(random() % (bytes.size() - 4))] =
                values[random() % 4]; // behind the first format
        }
        try
        {
            return read(bytes, value) == QDataStream::Ok;
        }
        catch (const TRAPPED_INTERNAL_ERROR& error)
        {
            EXPECT_EQ("Error in TOLV_COLOR::operator >>", error.text);
            return false;
        }
    };
    int read_well = 0;
    for (int i = 0; i < 5000; ++i)
    {
        read_well += read_damaged(TOLV_COLOR(QColor(1, 2, 3)), TOLV_COLOR(TOLV_RED_COLOR)) ? 1 : 0;
        read_well += read_damaged(TOLV_BRUSH(TOLV_RED_BRUSH), TOLV_BRUSH(TOLV_BLUE_BRUSH)) ? 1 : 0;
        read_well += read_damaged(TOLV_PEN(some_pen()), TOLV_PEN(TOLV_RED_PEN)) ? 1 : 0;
        read_well += read_damaged(custom_font, TOLV_FONT(TOLV_GUI_BOLD_FONT)) ? 1 : 0;
    }
    EXPECT_GT(read_well, 1000);
    EXPECT_LT(read_well, 19000);
}

TEST(TOLV_GDI_STREAM_PROCESS, another_format_ends_the_process_with_the_text_of_the_class)
{
    for (const auto& [name, text] :
         {std::pair("color", "Error in TOLV_COLOR::operator >>"),
          std::pair("brush", "Error in TOLV_BRUSH::operator >>"), std::pair("pen", "Error at TOLV_PEN::operator >>"),
          std::pair("font", "Error at TOLV_FONT::operator >>")})
    {
        const CHILD_RESULT result = run_child("tolv_gdi_child", {"read_format_2", name});
        EXPECT_NE(0, result.exit_status);
        EXPECT_NE(std::string::npos, result.err.find(text)) << result.err;
        EXPECT_EQ("", result.out);
    }
}
