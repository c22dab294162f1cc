#pragma once

#include <QByteArray>
#include <QImage>
#include <QRgb>
#include <vector>

// The bytes of an AVI file of uncompressed 24-bit frames, all of one size (at least one). What is less than
// half opaque in a frame gets the key colour, all else is opaque.
[[nodiscard]] QByteArray writeAvi(const std::vector<QImage>& frames, int framesPerSecond, QRgb key);
