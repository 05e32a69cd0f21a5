#include "cfgq_registry.h"
#include "tolv_app.h"
#include "tolv_brush.h"
#include "tolv_color.h"
#include "tolv_font.h"
#include "tolv_gdi_manager.h"
#include "tolv_pen.h"

#include <QApplication>
#include <QDataStream>

#include <cstdio>
#include <cstring>

// A tool as a second process: what it finds in the registry, what it leaves there, and what ends it.

namespace
{
void print(TOLV_COLOR_RESOURCE color, TOLV_PEN_RESOURCE pen, TOLV_FONT_RESOURCE font)
{
    const TOLV_PEN pen_value(pen);
    const TOLV_FONT font_value(font);
    std::printf("%s\n", qPrintable(TOLV_COLOR(color).get_color().name()));
    std::printf("%d %d %d %s %d\n", pen_value.get_width(), pen_value.get_style(), pen_value.get_cap_style(),
                qPrintable(pen_value.get_pen()->color().name()), pen_value.get_color().get_color_resource());
    std::printf("%s %d %d %d %s\n", qPrintable(font_value.get_face_name()), font_value.get_point_size(),
                font_value.get_bold(), font_value.get_italic(),
                qPrintable(font_value.get_text_color().get_color().name()));
}

void change_and_save()
{
    TOLV_COLOR::set_default_color(TOLV_FLP_NET_LINE_COLOR, QColor(17, 34, 51));
    TOLV_PEN::set_default_pen_width(TOLV_FLP_NET_PEN, 5);
    TOLV_PEN::set_default_pen_color(TOLV_FLP_NET_PEN, TOLV_FLP_REGION_LINE_COLOR);
    TOLV_FONT font(TOLV_FLP_LEGEND_FONT);
    font.set_font(QColor(1, 2, 3), QColor(250, 251, 252), QString::fromUtf8("Größe, \"Sans\""), 13, true, true);
    font.set_face_name(QString::fromUtf8("Größe Sans"));
    TOLV_FONT::set_default_font(TOLV_FLP_LEGEND_FONT, &font);
    TOLV_PEN::save_pens_in_registry();
    TOLV_FONT::save_fonts_in_registry();
}

int before_application()
{
    const TOLV_COLOR color(TOLV_RED_COLOR);
    const TOLV_PEN pen(TOLV_RED_PEN);
    const TOLV_FONT font(TOLV_GUI_FONT);
    std::printf("%s %d %d\n", qPrintable(color.get_color().name()), pen.get_width(), font.get_point_size());
    return 0;
}

int end_before_start()
{
    tolv_delete_gdi_manager();
    TOLV_COLOR(TOLV_RED_COLOR).get_color();
    std::printf("survived\n");
    return 0;
}

int behind_the_end(int& argc, char** argv)
{
    {
        TOLV_APP app(argc, TOLV_APP::copy_argv_for_qt(argc, const_cast<const char**>(argv)));
        std::printf("%d\n", TOLV_COLOR(TOLV_RED_COLOR).get_color().red());
    }
    std::fflush(stdout);
    TOLV_COLOR(TOLV_RED_COLOR).get_color();
    std::printf("survived\n");
    return 0;
}

/// Reads an object of each class from a stream in format 2.
int read_format_2(const char* name)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << 2 << 0 << 0;
    QDataStream stream(bytes);
    if (std::strcmp(name, "color") == 0)
        TOLV_COLOR(Qt::red).operator>>(stream);
    else if (std::strcmp(name, "brush") == 0)
        TOLV_BRUSH(TOLV_RED_BRUSH).operator>>(stream);
    else if (std::strcmp(name, "font") == 0)
        TOLV_FONT(TOLV_GUI_FONT).operator>>(stream);
    else
        TOLV_PEN(TOLV_RED_PEN).operator>>(stream);
    std::printf("survived\n");
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const char* const command = argc > 1 ? argv[1] : "";
    if (std::strcmp(command, "before_application") == 0)
        return before_application();
    if (std::strcmp(command, "end_before_start") == 0)
        return end_before_start();
    if (std::strcmp(command, "behind_the_end") == 0)
        return behind_the_end(argc, argv);

    QApplication app(argc, argv);
    if (std::strcmp(command, "print") == 0)
        print(TOLV_FLP_NET_LINE_COLOR, TOLV_FLP_NET_PEN, TOLV_FLP_LEGEND_FONT);
    else if (std::strcmp(command, "change_and_save") == 0)
        change_and_save();
    else if (std::strcmp(command, "read_format_2") == 0 && argc > 2)
        return read_format_2(argv[2]);
    else if (std::strcmp(command, "kerning") == 0)
        std::printf("%d %d\n", TOLV_FONT(TOLV_GUI_FONT).get_font()->kerning(),
                    TOLV_FONT::get_default_font(TOLV_GUI_FONT).get_font()->kerning());
    else
        return 2;
    return CFGQ_REGISTRY::flush() ? 0 : 1;
}
