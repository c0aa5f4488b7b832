// The artwork of the welcome page, drawn by the program itself and kept as a JPEG picture, so
// nothing in the wizard comes from anyone else's image files.
#pragma once

#include <QByteArray>
#include <QPixmap>

// The picture encoded as JPEG.
QByteArray welcomeJpeg();

// The same picture decoded for display; an empty pixmap only when no JPEG codec is present.
QPixmap welcomePicture();
