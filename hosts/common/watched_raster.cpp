#include "hosts/common/watched_raster.h"

#include <utility>

namespace orvane {

namespace {

class WatchedServer final : public RasterServer {
public:
    WatchedServer(std::unique_ptr<RasterServer> server, RasterWatch watch)
        : server_(std::move(server)), watch_(std::move(watch)) {}

    bool SrvIsReady() override { return server_->SrvIsReady(); }
    bool SrvInit() override { return server_->SrvInit(); }
    bool SrvLoad(std::string_view filename) override {
        const bool loaded = server_->SrvLoad(filename);
        // Without points a placement changes nothing, and its answer is whether the image says itself where it lies.
        if (loaded && watch_.placed) watch_.placed(server_->SrvCalcCorrect2());
        return loaded;
    }
    bool SrvClose() override { return server_->SrvClose(); }
    bool SrvDraw(DeviceContext& dc, const RasterPart& part, std::int16_t mode) override {
        const bool drawn = server_->SrvDraw(dc, part, mode);
        if (watch_.drawn) watch_.drawn(drawn);
        return drawn;
    }
    bool SrvRotate(double angle_deg) override { return server_->SrvRotate(angle_deg); }
    bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return server_->SrvSetCP1(bmpX, bmpY, GeoX, GeoY);
    }
    bool SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return server_->SrvSetCP2(bmpX, bmpY, GeoX, GeoY);
    }
    bool SrvCalcCorrect2() override {
        const bool placed = server_->SrvCalcCorrect2();
        if (watch_.placed) watch_.placed(placed);
        return placed;
    }
    std::int32_t SrvImgWidth() override { return server_->SrvImgWidth(); }
    std::int32_t SrvImgHeight() override { return server_->SrvImgHeight(); }

private:
    std::unique_ptr<RasterServer> server_;
    RasterWatch watch_;
};

}  // namespace

std::unique_ptr<RasterServer> WatchRaster(std::unique_ptr<RasterServer> server, RasterWatch watch) {
    return std::make_unique<WatchedServer>(std::move(server), std::move(watch));
}

}  // namespace orvane
