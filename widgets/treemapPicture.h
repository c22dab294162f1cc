#pragma once

#include <QByteArray>
#include <QString>

#include "widgets/chartPicture.h"
#include "widgets/treemap.h"
#include "widgets/treemapScene.h"

// The treemap as the content of a picture file, in the colours of documents and without marks. It copies
// everything it needs, so that another thread can create the bytes.
class TreemapPicture {
public:
    // The visible portion is as large as on the screen. The entire treemap is at least as large as on a usual
    // screen, or on a page in small print, and shows more of what is small.
    TreemapPicture(const Treemap& treemap, ChartPicture::Portion portion, ChartPicture::Format format,
                   const QString& date);

    [[nodiscard]] const TreemapScene& scene() const noexcept { return scene_; }

    // The file's content. Throws 7 if there is not enough memory.
    [[nodiscard]] QByteArray bytes() const;

private:
    [[nodiscard]] QByteArray pdf() const;

    ChartPicture::Format format_;
    TreemapScene scene_;
    double ratio_; // pixels of a PNG picture per unit of the scene
};
