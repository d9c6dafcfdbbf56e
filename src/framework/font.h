#pragma once

#include "framework/owned_handle.h"

#include <string>

// A font that is deleted with its object.
class CFont {
public:
    bool CreateFontIndirect(const LOGFONTA& description) {
        m_font.Reset(::CreateFontIndirectA(&description));
        return static_cast<bool>(m_font);
    }
    // `tenthsOfPoints`: the size, 130 for 13 points.
    bool CreatePointFont(int tenthsOfPoints, const char* faceName);
    HFONT Get() const { return m_font.Get(); }

private:
    FontHandle m_font;
};

// DrawText on one line, in narrower letters of the same font where the text is wider than its place: a code
// that is cut off reads as another one.
void DrawWhole(HDC dc, const std::string& text, RECT place, UINT format);
