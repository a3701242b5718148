#include "foreign/raster/image_sources.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "foreign/raster/plain_files.h"

namespace orvane {

namespace {

// The drivers that read pixels out of the file they are given, or out of files beside it that have its own name with another
// ending, or out of the folder they are given; and that read it through GDAL's files, so that PlainName holds. An image is
// opened by its name alone, and a driver that goes where a file sends it could be sent to a pipe, a raw address of memory, a slow
// network or a thousand other images. So these are left out:
// - compositions and services: VRT, DERIVED, MEM, RPFTOC, ECRGTOC, TIL, WCS, WMS, WMTS, HTTP, PLMOSAIC, PLSCENES, STACIT, STACTA,
//   EEDAI, DAAS, NGW, OGCAPI, MRF, PostGISRaster, Rasterlite, KMLSUPEROVERLAY, MAP, ESRIC, CAD
// - headers and products that name the files of their pixels: ERS, PCIDSK, ILWIS, ISIS2, ISIS3, PDS, PDS4, PAux, PRF, SDTS,
// DIMAP,
//   RS2, SAFE, SENTINEL2, TSX, SNODAS, FAST, NDF, EIR, MFF, MFF2, ADRG, SRP, AirSAR, JAXAPALSAR, CPG
// - containers that hand their content to any driver: NITF, CALS
// - formats whose libraries open files by themselves, some also those that an image names: netCDF, HDF4, HDF4Image, HDF5,
//   HDF5Image, BAG, FITS, PCRaster, COASP
// - a page description, which is run rather than read: PDF
// - measurements that have no picture: R, GSC, L1B, SAR_CEOS, CEOS, ESAT, MSGN, COSAR, GFF, IRIS
constexpr const char* kOwnFileDrivers[] = {
    // pictures
    "GTiff", "PNG", "JPEG", "GIF", "BIGGIF", "BMP", "JP2OpenJPEG", "WEBP", "HEIF", "PNM", "TGA", "SGI", "XPM", "BSB", "OZI",
    "RIK", "BLX", "FIT", "RMF", "GPKG", "MBTiles",
    // picture and grid files of mapping systems
    "HFA", "ENVI", "EHdr", "GenBin", "ISCE", "ROI_PAC", "RRASTER", "SAGA", "RST", "AIG", "AAIGrid", "GRASSASCIIGrid", "ARG",
    "VICAR", "LAN", "ELAS", "DIPEx", "DOQ1", "DOQ2", "KRO", "LCP", "CTG", "NWT_GRD", "NWT_GRC", "GSAG", "GSBG", "GS7BG", "GXF",
    "ZMap", "XYZ", "GRIB", "Zarr",
    // heights
    "DTED", "USGSDEM", "JDEM", "SRTMHGT", "ACE2", "BT", "HF2", "Leveller", "Terragen", "SIGDEM", "BYN", "ISG", "NGSGEOID", "GTX",
    "LOSLAS", "NTv2", "CTable2",
    // the list of GDAL's call ends so
    nullptr};

bool IsOwnFileDriver(const GDALDriver* driver) {
    if (driver == nullptr) return true;  // a part of the image, which no driver opened
    const std::string_view name = driver->GetDescription();
    return std::any_of(std::begin(kOwnFileDrivers), std::end(kOwnFileDrivers) - 1, [&](const char* own) { return name == own; });
}

/// A walk over an image, its overviews and masks, and the images that these are in.
class SourceWalk {
public:
    SourceWalk(RasterSources sources, double maxBlock_bytes) : sources_(sources), maxBlock_bytes_(maxBlock_bytes) {}

    bool Visit(GDALDataset* dataset) {
        if (dataset == nullptr || std::find(seen_.begin(), seen_.end(), dataset) != seen_.end()) return true;
        // Overviews of overviews of overviews are no image.
        if (seen_.size() >= kMaxDatasets) return false;
        seen_.push_back(dataset);
        if (sources_ == RasterSources::OwnFiles) {
            if (!IsOwnFileDriver(dataset->GetDriver())) return false;
            // Overviews by another name may be anything anywhere, and would be opened by the next call.
            if (dataset->GetMetadataItem("OVERVIEW_FILE", "OVERVIEWS") != nullptr) return false;
        }
        if (BlockBytes(*dataset) > maxBlock_bytes_) return false;
        for (int i = 1; i <= dataset->GetRasterCount(); ++i) {
            GDALRasterBand* const band = dataset->GetRasterBand(i);
            if (band == nullptr || !VisitBand(*band)) return false;
            if (i == kMaxBands) break;
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

    static double BlockBytes(GDALDataset& dataset) {
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

    RasterSources sources_;
    double maxBlock_bytes_;
    std::vector<GDALDataset*> seen_;
};

}  // namespace

RasterSources AllowedSources() {
    const char* const told = std::getenv("ORVANE_RASTER_SOURCES");
    return told != nullptr && std::strcmp(told, "any") == 0 ? RasterSources::Any : RasterSources::OwnFiles;
}

GDALDataset* OpenRaster(const std::string& name, RasterSources sources) {
    constexpr unsigned kHow = GDAL_OF_RASTER | GDAL_OF_READONLY;
    if (sources == RasterSources::Any) return GDALDataset::Open(name.c_str(), kHow);
    return GDALDataset::Open(PlainName(name).c_str(), kHow, kOwnFileDrivers);
}

bool ComesFromAllowedSources(GDALDataset& dataset, RasterSources sources, double maxBlock_bytes) {
    return SourceWalk(sources, maxBlock_bytes).Visit(&dataset);
}

}  // namespace orvane
