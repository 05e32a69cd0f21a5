#include "mod_webnav.h"

#include <QDesktopServices>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace
{
const char SITE[] = "https://norvane.example/";

struct PAGE
{
    int number;
    const char* path;
};

constexpr PAGE PAGES[] = {{3, "support/service-request"}, {11, "documentation"}, {12, "notifications"}};
} // namespace

void webnav_dyn_locate_to_web_page_based_on_enum(int page)
{
    const PAGE* const found =
        std::find_if(std::begin(PAGES), std::end(PAGES), [page](const PAGE& row) { return row.number == page; });
    const QString path = found == std::end(PAGES) ? QString() : QString::fromLatin1(found->path);
    QDesktopServices::openUrl(QUrl(QString::fromLatin1(SITE) + path));
}

void webnav_dyn_locate_to_web_page_based_on_url(const std::string& url)
{
    QDesktopServices::openUrl(QUrl::fromUserInput(QString::fromLocal8Bit(url.c_str())));
}

void webnav_dyn_go_to_encoded_url(const std::string& url)
{
    QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url)));
}
