#pragma once

#include <QByteArray>
#include <QImage>
#include <vector>

// The bytes of an .ico file with these pictures (square, at most 256 pixels wide), each stored as PNG.
[[nodiscard]] QByteArray writeIco(const std::vector<QImage>& pictures);
