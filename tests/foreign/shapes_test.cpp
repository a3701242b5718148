#include "foreign/shapes.h"

#include <gtest/gtest.h>
#include <ogr_geometry.h>
#include <ogr_spatialref.h>

#include <cmath>
#include <memory>

namespace orvane {
namespace {

class ShapesTest : public ::testing::Test {
protected:
    ShapesTest() {
        OGRSpatialReference plane;
        plane.importFromEPSG(6677);
        EXPECT_TRUE(projector_.ToPlane(plane, {Datum::Jgd2011, 9}));
    }
    void Read(const OGRGeometry* geometry) {
        ShapeReader(projector_, leftOut, [&](Shape&& shape) { shapes.push_back(std::move(shape)); }).Read(geometry);
    }

    LeftOut leftOut;
    std::vector<Shape> shapes;

private:
    Projector projector_;
};

TEST_F(ShapesTest, NoGeometryIsCountedAsSuch) {
    Read(nullptr);
    const OGRPoint empty;
    Read(&empty);
    EXPECT_EQ(leftOut.noGeometry, 2);
    EXPECT_EQ(leftOut.LostShapes(), 0);
}

TEST_F(ShapesTest, AValueThatIsNoNumberMakesTheShapeUnstorable) {
    OGRLineString line;
    line.addPoint(1, 2);
    line.addPoint(3, std::nan(""));
    Read(&line);
    OGRPolygon polygon;
    OGRLinearRing ring;
    for (const double x : {0.0, 1.0, HUGE_VAL, 0.0}) ring.addPoint(x, x * x);
    polygon.addRing(&ring);
    Read(&polygon);
    OGRLineString height;
    height.addPoint(1, 2, 3);
    height.addPoint(3, 4, std::nan(""));
    Read(&height);
    EXPECT_EQ(leftOut.notFinite, 3);
    EXPECT_TRUE(shapes.empty());
}

TEST_F(ShapesTest, AValueBeyondWhatBoundsOfItemsHoldIsUnstorable) {
    const OGRPoint inside(99999999, -99999999);
    Read(&inside);
    const OGRPoint outside(100000000, 0);
    Read(&outside);
    EXPECT_EQ(shapes.size(), 1u);
    EXPECT_EQ(leftOut.notFinite, 1);
}

TEST_F(ShapesTest, ALongLineKeepsAllItsPointsInOrder) {
    OGRLineString line;
    for (int i = 0; i < 10000; ++i) line.addPoint(i, 2 * i);
    Read(&line);
    ASSERT_EQ(shapes.size(), 1u);
    ASSERT_EQ(shapes[0].pnts.size(), 10000u);
    for (std::size_t i = 0; i < 10000; ++i) {
        ASSERT_EQ(shapes[0].pnts[i].x, static_cast<double>(i));
        ASSERT_EQ(shapes[0].pnts[i].y, 2 * static_cast<double>(i));
    }
}

TEST_F(ShapesTest, CollectionsNestedWithoutEndAreGivenUp) {
    std::unique_ptr<OGRGeometry> nest = std::make_unique<OGRPoint>(1, 2);
    for (int depth = 0; depth < 40; ++depth) {
        auto outer = std::make_unique<OGRGeometryCollection>();
        outer->addGeometryDirectly(nest.release());
        nest = std::move(outer);
    }
    Read(nest.get());
    EXPECT_TRUE(shapes.empty());
    EXPECT_EQ(leftOut.unknownType, 1);
}

TEST_F(ShapesTest, APolygonWithoutAnOuterRingLosesItsHolesToo) {
    OGRPolygon polygon;
    OGRLinearRing outer;
    for (const double x : {0.0, 0.0, 0.0, 0.0}) outer.addPoint(x, x);
    OGRLinearRing hole;
    hole.addPoint(1, 1);
    hole.addPoint(2, 1);
    hole.addPoint(2, 2);
    hole.addPoint(1, 1);
    polygon.addRing(&outer);
    polygon.addRing(&hole);
    Read(&polygon);
    EXPECT_TRUE(shapes.empty());
    EXPECT_EQ(leftOut.tooFewPoints, 1);
    EXPECT_EQ(leftOut.rings, 0) << "the whole polygon is counted, not its rings";
}

}  // namespace
}  // namespace orvane
