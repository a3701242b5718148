"""Coordinates over arrays: the forms against each other and against places worked out by hand."""

import subprocess
import sys

import numpy as np
import pytest

import orvane4

LAT, LON = np.array([35.5, 35 + 40 / 60, 36.0]), np.array([139.5, 139 + 37.5 / 60, 139 + 50 / 60])


def test_the_origin_of_zone_nine_is_zero():
    x, y = orvane4.geo_to_plane(36.0, 139 + 50 / 60, 9)
    assert abs(x) < 1e-6 and abs(y) < 1e-6


def test_x_is_the_northing_and_y_the_easting():
    x, y = orvane4.geo_to_plane(LAT, LON, 9)
    assert x.shape == y.shape == (3,)
    assert x[0] < x[1] < x[2] and y[0] < y[1] < y[2] < 1e-6
    assert x[0] == pytest.approx(-0.5 * 110960, rel=2e-3)
    assert y[0] == pytest.approx(-20 / 60 * 90620, rel=2e-3)


def test_plane_and_back_is_the_same_place():
    latitude, longitude = orvane4.plane_to_geo(*orvane4.geo_to_plane(LAT, LON, 9), 9)
    assert np.abs(latitude - LAT).max() < 1e-9
    assert np.abs(longitude - LON).max() < 1e-9


def test_the_mesh_frame_is_ten_thousand_units_a_sheet():
    x, y = orvane4.geo_to_mesh(LAT, LON)
    assert x == pytest.approx((LON - 100) * 80000, abs=0.01)
    assert y == pytest.approx(LAT * 120000, abs=0.01)
    assert orvane4.mesh_number(x + 1, y + 1).tolist() == [533924, 533945, 543906]
    latitude, longitude = orvane4.mesh_to_geo(x, y)
    assert np.abs(latitude - LAT).max() < 1e-7
    assert np.abs(longitude - LON).max() < 1e-7


def test_a_sheets_origin_and_its_corner_in_the_plane():
    x, y = orvane4.mesh_origin([533945])
    assert (x.tolist(), y.tolist()) == ([3170000.0], [4280000.0])
    north, east = orvane4.mesh_to_plane(x, y, 9)
    expected = orvane4.geo_to_plane([LAT[1]], [LON[1]], 9)
    assert north == pytest.approx(expected[0], abs=1e-5)
    assert east == pytest.approx(expected[1], abs=1e-5)


def test_a_sheet_number_is_read_by_its_first_six_characters():
    x, y = orvane4.mesh_origin([5339457, 45, -5])
    assert (x.tolist(), y.tolist()) == ([3170000.0, 50000.0, 50000.0], [4280000.0, 40000.0, 0.0])


@pytest.mark.parametrize("number", [2**31, -(2**31) - 1, 2**32 + 533945, 2**70, 533945.5, np.nan, np.inf])
def test_what_is_no_number_of_32_bits_is_no_sheet_number(number):
    with pytest.raises(ValueError, match="32 bits"):
        orvane4.mesh_origin([533945, number])


@pytest.mark.parametrize("function", ["geo_to_plane", "plane_to_geo", "mesh_to_plane", "plane_to_mesh"])
def test_the_limits_of_the_zones_are_told_where_they_are_used(function):
    text = " ".join(getattr(orvane4, function).__doc__.split())
    assert ("700 kilometres" in text and "160 kilometres" in text) or "limits" in text
    assert "700 kilometres north and south and 160 kilometres east and west" in orvane4.geo_to_plane.__doc__


def test_plane_to_mesh_is_by_way_of_the_angles():
    x, y = orvane4.plane_to_mesh(*orvane4.geo_to_plane(LAT, LON, 9), 9)
    assert x == pytest.approx((LON - 100) * 80000, abs=0.01)
    assert y == pytest.approx(LAT * 120000, abs=0.01)


def test_arrays_keep_their_shape_and_lists_and_other_types_are_taken():
    x, y = orvane4.geo_to_plane(np.full((2, 3), 36, dtype=np.int32), np.full((2, 3), 140, dtype=np.float32), 9)
    assert x.shape == y.shape == (2, 3)
    assert np.all(x == x[0, 0])
    x, y = orvane4.geo_to_plane(LAT[::-1], LON[::-1], 9)
    assert x[2] == orvane4.geo_to_plane(LAT, LON, 9)[0][0]
    assert [len(a) for a in orvane4.geo_to_plane([], [], 9)] == [0, 0]


def test_what_is_no_place_becomes_not_a_number_and_leaves_the_others_alone():
    x, y = orvane4.geo_to_plane([36, np.nan, 91, 36], [140, 140, 140, np.inf], 9)
    assert np.isnan(x).tolist() == np.isnan(y).tolist() == [False, True, True, True]
    x, y = orvane4.geo_to_mesh([36, -1, 36], [140, 140, 109])
    assert np.isnan(x).tolist() == [False, True, True]
    # Places of the mesh frame without a sheet have no plane, and planes without a sheet no place in the mesh frame.
    x, y = orvane4.mesh_to_plane([3170000, 799999, 6400000, 3170000, 3170000, np.nan], [4280000] * 3 + [-1, 8e6, 4280000], 9)
    assert np.isnan(x).tolist() == np.isnan(y).tolist() == [False] + [True] * 5
    x, y = orvane4.plane_to_mesh([0, -4e6, 0, 0, 1e300, -1e300, np.inf], [0, 0, -3e6, 1e300, 0, -1e300, 0], 9)
    assert np.isnan(x).tolist() == np.isnan(y).tolist() == [False] + [True] * 6
    assert orvane4.mesh_number([np.nan, -5, 3170000], [0, 0, 4280000]).tolist() == [-1, -1, 533945]


@pytest.mark.parametrize("function", [orvane4.geo_to_plane, orvane4.plane_to_geo, orvane4.mesh_to_plane, orvane4.plane_to_mesh])
@pytest.mark.parametrize("zone", [0, -1, 20])
def test_a_zone_outside_one_to_nineteen_is_refused(function, zone):
    with pytest.raises(ValueError, match="1 to 19"):
        function([36], [140], zone)


def test_arrays_of_two_shapes_are_refused():
    with pytest.raises(ValueError, match="same shape"):
        orvane4.geo_to_plane([36, 36], [140], 9)
    with pytest.raises(ValueError, match="same shape"):
        orvane4.mesh_number([1, 2], [1])


def test_the_module_is_there_without_numpy():
    code = "import sys; sys.modules['numpy'] = None; import orvane4; orvane4.Orvane4Ctrl().invoke('OrvInit')"
    assert subprocess.run([sys.executable, "-c", code], check=False).returncode == 0
