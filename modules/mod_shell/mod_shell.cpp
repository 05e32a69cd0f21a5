#include "mod_shell.h"

#include <QDesktopServices>
#include <QUrl>
#include <QUrlQuery>

void shell_dyn_launch_external_web_browser(const std::string& text, int /*mode*/)
{
    // A plus sign in a query stands for a blank unless it is encoded by hand.
    const QString search = QString::fromLocal8Bit(text.c_str()).trimmed();
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("q"), QString::fromLatin1(QUrl::toPercentEncoding(search)));
    QUrl url(QStringLiteral("https://norvane.example/search"));
    url.setQuery(query);
    QDesktopServices::openUrl(url);
}
