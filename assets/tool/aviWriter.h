#pragma once

#include <QByteArray>
#include <QImage>
#include <QRgb>
#include <vector>

// The bytes of an AVI file of uncompressed 24-bit frames, all of the same size (at least one frame). Pixels
// that are less than half opaque get the key colour; all others become opaque.
[[nodiscard]] QByteArray writeAvi(const std::vector<QImage>& frames, int framesPerSecond, QRgb key);
