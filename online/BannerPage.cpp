#include "online/BannerPage.h"

#include "online/Html.h"

namespace online {

std::string BannerPage(std::string_view imagePath, std::string_view link)
{
    return "<html>\r\n"
           "<style type=\"text/css\"><!-- BODY {overflow : visible;} --></style>\r\n"
           "<body id=\"HIMBody\" leftmargin=0 topmargin=0 bgcolor = \"white\"  >\r\n"
           "<SCRIPT language=VBScript for=\"HIMBody\" event=\"oncontextmenu()\">\r\n"
           "window.event.ReturnValue = False\r\n"
           "</SCRIPT>\r\n"
           "<table width=\"100%\"><tr><td align=\"center\" valign=\"middle\">\r\n"
           "<a href=\"" +
           Escaped(link) +
           "\" target=\"main\"><img id=\"zoomazoomzoom\" style=\"position: relative;; z-index: 10 top:0\" "
           "width=\"500\" height=\"60\" src=\"" +
           Escaped(imagePath) +
           "\" Border = 0 ></a>\r\n"
           "</td></tr></table>\r\n"
           "<script language=\"javascript\">\r\n"
           "zoomer = document.all('zoomazoomzoom');\r\n"
           "daScale = 1;\r\n"
           "</script>\r\n"
           "</body>\r\n"
           "</html>\r\n";
}

} // namespace online
