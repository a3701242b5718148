// In what pieces the pixels of an image are stored.
#pragma once

class GDALDataset;

namespace orvane {

/// Whether all that is drawn of an opened image - its bands, their overviews and masks, and those of these - is stored in blocks
/// of at most `max_bytes`, all bands of a block taken together. To be asked before anything is read.
bool HasBlocksUpTo(GDALDataset& dataset, double max_bytes);

}  // namespace orvane
