#include "framework/font.h"

#include <cstring>

bool CFont::CreatePointFont(int tenthsOfPoints, const char* faceName) {
    const WindowDc screen(nullptr);
    LOGFONTA description{};
    description.lfHeight = -MulDiv(tenthsOfPoints, GetDeviceCaps(screen.Get(), LOGPIXELSY), 720);
    description.lfCharSet = DEFAULT_CHARSET;
    strncpy(description.lfFaceName, faceName, sizeof(description.lfFaceName) - 1);
    return CreateFontIndirect(description);
}
