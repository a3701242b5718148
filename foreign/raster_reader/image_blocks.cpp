#include "foreign/raster_reader/image_blocks.h"

#include <gdal_priv.h>

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

double BlockBytes(GDALDataset& dataset) {
    double bytes = 0;
    for (int i = 1; i <= dataset.GetRasterCount(); ++i) {
        GDALRasterBand* const band = dataset.GetRasterBand(i);
        if (band == nullptr) continue;
        int width = 0;
        int height = 0;
        band->GetBlockSize(&width, &height);
        bytes += static_cast<double>(width) * height * GDALGetDataTypeSizeBytes(band->GetRasterDataType());
    }
    return bytes;
}

/// A walk over an image, its overviews and masks, and the images that these are in.
class BlockWalk {
public:
    explicit BlockWalk(double max_bytes) : max_bytes_(max_bytes) {}

    bool Visit(GDALDataset* dataset) {
        if (dataset == nullptr || std::find(seen_.begin(), seen_.end(), dataset) != seen_.end()) return true;
        // Overviews of overviews of overviews are no image.
        if (seen_.size() >= kMaxDatasets || BlockBytes(*dataset) > max_bytes_) return false;
        seen_.push_back(dataset);
        for (int i = 1; i <= (std::min)(dataset->GetRasterCount(), kMaxBands); ++i) {
            GDALRasterBand* const band = dataset->GetRasterBand(i);
            if (band == nullptr || !VisitBand(*band)) return false;
        }
        return true;
    }

private:
    static constexpr std::size_t kMaxDatasets = 256;
    // The files with overviews and masks are found from any one band.
    static constexpr int kMaxBands = 4;

    bool VisitBand(GDALRasterBand& band) {
        const int count = band.GetOverviewCount();
        for (int i = 0; i < count; ++i) {
            GDALRasterBand* const overview = band.GetOverview(i);
            if (overview != nullptr && !Visit(overview->GetDataset())) return false;
        }
        GDALRasterBand* const mask = band.GetMaskBand();
        return mask == nullptr || Visit(mask->GetDataset());
    }

    double max_bytes_;
    std::vector<GDALDataset*> seen_;
};

}  // namespace

bool HasBlocksUpTo(GDALDataset& dataset, double max_bytes) { return BlockWalk(max_bytes).Visit(&dataset); }

}  // namespace orvane
