// The stages of the polygon overlay and what passes between them. All of them may throw std::bad_alloc, which ends the pair.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/box_tree.h"
#include "analysis/overlay.h"
#include "analysis/vertex_table.h"

namespace orvane {

/// A piece of a ring. Places are numbered by their vertex, so that equal ends have equal numbers.
struct PolyEdge {
    double x1 = 0, y1 = 0;
    double x2 = 0, y2 = 0;
    std::int32_t from = 0, to = 0;  ///< vertices
    std::int32_t ring = 0;
};

/// The edges of a polygon, ring after ring, in the direction of the points.
struct EdgeList {
    std::vector<PolyEdge> edges;
    std::vector<std::size_t> ringStarts;  ///< positions of the rings' first edges, and one behind the last edge

    std::size_t RingCnt() const { return ringStarts.empty() ? 0 : ringStarts.size() - 1; }
};

/// Which of the two lists an edge belongs to, and the mark of a vertex that is an end in it.
enum OverlaySide : std::uint8_t { kSideA = 1, kSideB = 2 };

/// More pieces than this are no memory.
inline constexpr std::size_t kMostPieces = std::size_t{1} << 24;

/// Asks the host from time to time whether to go on. Once it has said no, every step says so.
class OverlayWatch {
public:
    explicit OverlayWatch(const OverlayProgress& progress) : progress_(progress) {}
    /// The part of the whole work that the step at hand is, from `from` to `to`.
    void SetRange(double from, double to) {
        from_ = done_ = from;
        to_ = to;
    }
    /// How much of the step is done, from 0 to 1.
    void SetDone(double done) { done_ = from_ + (to_ - from_) * done; }
    bool Stopped() const { return stopped_; }
    /// How often the host was asked: after a question nothing that was read from the store is to be trusted.
    std::uint32_t Questions() const { return questions_; }
    /// One small piece of work.
    bool GoesOn() { return ++steps_ % kStepsPerQuestion != 0 ? !stopped_ : Ask(); }
    bool Ask();

private:
    static constexpr std::uint32_t kStepsPerQuestion = 1u << 14;

    const OverlayProgress& progress_;
    double from_ = 0;
    double to_ = 1;
    double done_ = 0;
    std::uint32_t steps_ = 0;
    std::uint32_t questions_ = 0;
    bool stopped_ = false;
};

/// How much of a pair's work is done when its stages begin, by what they take of a large one.
inline constexpr double kCutDone = 0.4;
inline constexpr double kClassifyDone = 0.8;

/// Gives each point of `right` the place of the first point of `left` that lies within 0.0001 of it; z stays. Ends early when
/// stopped.
void OverlaySnap(std::span<const DigPnt> left, std::span<DigPnt> right, OverlayWatch& watch);

/// The overlay inside of a longer work.
bool OverlayPair(std::span<const DigPnt> a, std::span<const DigPnt> b, OverlayMode mode, std::vector<DigPnt>& result,
                 OverlayWatch& watch);

/// The lengths of the closed rings of `pts`, from the first on.
std::vector<std::int32_t> RingLengths(std::span<const DigPnt> pts);

/// Edges of the rings of `pts`; their vertices get the mark `side`.
EdgeList MakeEdgeList(std::span<const DigPnt> pts, OverlaySide side, VertexTable& vertices);

/// Cuts the edges of both lists where they cross each other (overlay_cut.cpp). False when a list grew past the square of the edge
/// counts or past kMostPieces, when two edges cut each other tens of thousands of times, or when stopped.
bool CutEdges(EdgeList& a, EdgeList& b, VertexTable& vertices, OverlayWatch& watch);

/// The edges of both lists that bound the result (overlay_classify.cpp): first those that the lists share, then those of A and
/// those of B by where their middles lie. False when stopped.
bool Classify(const EdgeList& a, const EdgeList& b, OverlayMode mode, const VertexTable& vertices, OverlayWatch& watch,
              std::vector<PolyEdge>& kept);

/// Chains edges into rings (overlay_link.cpp): drops what cannot be part of one, for the union also the shared copies inside of
/// the merged shape, and follows what is left. `vertexCnt` is above every vertex of `edges`. Empty when stopped.
std::vector<DigPnt> Link(std::span<const PolyEdge> edges, std::size_t vertexCnt, OverlayMode mode, OverlayWatch& watch);

/// Puts several rings into the order of their lowest vertices' x and begins each at that vertex (overlay_rings.cpp).
void Normal(std::vector<DigPnt>& pts, OverlayWatch& watch);
/// Removes rings that stand twice: one of them, or both where the place lies inside of the rest.
void Twins(std::vector<DigPnt>& pts, OverlayWatch& watch);
/// Turns each ring whose opening point counts as outside anticlockwise, with y upward, and each other clockwise.
void Orient(std::vector<DigPnt>& pts, OverlayWatch& watch);

}  // namespace orvane
