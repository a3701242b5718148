// A small white picture with a context on it, and its pixels as text.
#pragma once

#include <QImage>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/qt/qt_context.h"
#include "platform/values.h"

namespace orvane {

constexpr Rgb kBlack = 0x000000;
constexpr Rgb kWhite = 0xFFFFFF;
constexpr Rgb kRed = 0x0000FF;
constexpr Rgb kGreen = 0x00FF00;
constexpr Rgb kBlue = 0xFF0000;
constexpr Rgb kYellow = 0x00FFFF;

class Picture {
public:
    Picture(int width_px, int height_px) : image_(width_px, height_px, QImage::Format_RGB32), dc(image_) {
        image_.fill(Qt::white);
    }

    Rgb At(int x, int y) const {
        const QRgb p = image_.pixel(x, y);
        return static_cast<Rgb>(qRed(p)) | static_cast<Rgb>(qGreen(p)) << 8 | static_cast<Rgb>(qBlue(p)) << 16;
    }
    void Set(int x, int y, Rgb color) { image_.setPixel(x, y, ToPixel(color)); }
    void Fill(Rgb color) { image_.fill(ToPixel(color)); }

    /// One text per row: '.' white, '#' black, 'r', 'g', 'b', 'y' the pure colours, '?' any other.
    std::vector<std::string> Rows() const {
        static const std::map<Rgb, char> kLetters{{kWhite, '.'}, {kBlack, '#'}, {kRed, 'r'},
                                                  {kGreen, 'g'}, {kBlue, 'b'},  {kYellow, 'y'}};
        std::vector<std::string> rows;
        for (int y = 0; y < image_.height(); ++y) {
            std::string& row = rows.emplace_back();
            for (int x = 0; x < image_.width(); ++x) {
                const auto letter = kLetters.find(At(x, y));
                row += letter == kLetters.end() ? '?' : letter->second;
            }
        }
        return rows;
    }
    /// Pixels that are not of `color`.
    int CountOther(Rgb color) const {
        int count = 0;
        for (int y = 0; y < image_.height(); ++y) {
            for (int x = 0; x < image_.width(); ++x) count += At(x, y) != color ? 1 : 0;
        }
        return count;
    }
    /// The byte that is no colour is 0xFF everywhere.
    bool FourthBytesAreKept() const {
        for (int y = 0; y < image_.height(); ++y) {
            const auto* const row = reinterpret_cast<const QRgb*>(image_.constScanLine(y));
            for (int x = 0; x < image_.width(); ++x) {
                if (row[x] >> 24 != 0xFF) return false;
            }
        }
        return true;
    }
    QImage& Image() { return image_; }

private:
    QImage image_;

public:
    QtContext dc;
};

using Rows = std::vector<std::string>;

inline void Polyline(DeviceContext& dc, const std::vector<Point>& pts) {
    dc.Polyline(pts.data(), static_cast<std::int32_t>(pts.size()));
}

inline void PolyPolygon(DeviceContext& dc, const std::vector<std::vector<Point>>& rings) {
    std::vector<Point> pts;
    std::vector<std::int32_t> counts;
    for (const auto& ring : rings) {
        pts.insert(pts.end(), ring.begin(), ring.end());
        counts.push_back(static_cast<std::int32_t>(ring.size()));
    }
    dc.PolyPolygon(pts.data(), counts.data(), static_cast<std::int32_t>(counts.size()));
}

inline std::vector<Point> RectRing(int left, int top, int right, int bottom) {
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

inline Pen SolidPen(Rgb color, std::int32_t width_px = 1) { return CreatePen(PenStyle::Solid, width_px, color); }
inline Pen NullPen() { return CreatePen(PenStyle::Null, 1, 0); }

}  // namespace orvane
