#include "framework/font.h"

#include <algorithm>
#include <cstring>
#include <utility>

bool CFont::CreatePointFont(int tenthsOfPoints, const char* faceName) {
    const WindowDc screen(nullptr);
    LOGFONTA description{};
    description.lfHeight = -MulDiv(tenthsOfPoints, GetDeviceCaps(screen.Get(), LOGPIXELSY), 720);
    description.lfCharSet = DEFAULT_CHARSET;
    strncpy(description.lfFaceName, faceName, sizeof(description.lfFaceName) - 1);
    return CreateFontIndirect(description);
}

void DrawWhole(HDC dc, const std::string& text, RECT place, UINT format) {
    const int length = static_cast<int>(text.size());
    const LONG room = std::max<LONG>(place.right - place.left, 1);
    const auto width = [&] {
        SIZE size{};
        GetTextExtentPoint32A(dc, text.c_str(), length, &size);
        return size.cx;
    };
    const HGDIOBJ given = GetCurrentObject(dc, OBJ_FONT);
    LOGFONTA description{};
    GetObjectA(given, sizeof(description), &description);
    TEXTMETRICA letters{};
    GetTextMetricsA(dc, &letters);
    CFont narrow;
    const SelectedObject giveBack(dc, given);
    while (width() > room && letters.tmAveCharWidth > 1) {
        description.lfWidth = --letters.tmAveCharWidth;
        CFont next;
        next.CreateFontIndirect(description);
        SelectObject(dc, next.Get());
        narrow = std::move(next);
    }
    DrawTextA(dc, text.c_str(), length, &place, format);
}
