// What every window of the face shares: its fonts, the screen's scale, the window classes, the
// hourglass and the welcome picture. Sizes are given for a 96 dpi screen and scaled to the
// screen's (the program declares itself DPI-aware, so Windows does not stretch it blurrily).
#pragma once

#include <windows.h>

struct Look {
    HFONT font;    // the system's message font
    HFONT heading; // a page's heading: bold and larger
    HFONT title;   // the welcome page's title: bold and larger still
    HBITMAP picture;
    int dpi;
    int scale(int pixels) const { return MulDiv(pixels, dpi, 96); }
};

// Made on first use (registering the window classes with it).
const Look& look();

// Moves a control to a place given at 96 dpi, within its parent.
void place(HWND control, int x, int y, int width, int height);

// The screen's pointer as the wizard last set it: while busy, every window of the program shows
// the hourglass.
bool busyPointer();
void setBusyPointer(bool busy);

// The window procedure of a frame (a page of the wizard, or a frame in a dialog): it draws its
// edge and its heading, in the font it is given, and hands its controls' messages to the window
// it sits on.
LRESULT CALLBACK pageProcedure(HWND page, UINT message, WPARAM w, LPARAM l);
