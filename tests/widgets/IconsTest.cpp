#include <gtest/gtest.h>

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPixmap>

#include <set>

namespace {

struct Row {
    const char* file;
    size_t colours; ///< that a large picture has at least
};

constexpr Row kRows[] = {
    {"com.orlin.NibPad71.svg", 20}, {"com.orlin.NibPad71-symbolic.svg", 2}, {"text-x-mvbasic.svg", 20}};

QImage Drawn(const char* file, int side)
{
    const QIcon icon(QStringLiteral(NIB_SOURCE_DIR "/resources/icons/") + QLatin1String(file));
    return icon.pixmap(side, side).toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

TEST(Icons, AreDrawnInEachSizeOnNothing)
{
    for (const Row& row : kRows) {
        for (const int side : {16, 22, 32, 48, 128, 256}) {
            const QImage image = Drawn(row.file, side);
            ASSERT_EQ(image.size(), QSize(side, side)) << row.file;
            std::set<QRgb> colours;
            int inked = 0;
            for (int y = 0; y < side; ++y) {
                for (int x = 0; x < side; ++x) {
                    colours.insert(image.pixel(x, y));
                    if (qAlpha(image.pixel(x, y)) > 200) ++inked;
                }
            }
            EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << row.file << " fills its corner at " << side;
            EXPECT_GT(inked, side * side / 5) << row.file << " is all but empty at " << side;
            EXPECT_GE(colours.size(), row.colours) << row.file << " at " << side;
        }
    }
}
