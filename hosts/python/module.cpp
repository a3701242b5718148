// The Python module `orvane4`: the control as a host sees it, and the rig that tests drive it with. Members come from the
// automation table, so none is written twice.
#include <pybind11/pybind11.h>

#include "hosts/python/coordinates.h"
#include "hosts/python/dump.h"
#include "hosts/python/members.h"
#include "hosts/python/rig.h"
#include "hosts/python/values.h"

namespace py = pybind11;
using orvane::python::ForcedArray;
using orvane::python::ForeignContext;
using orvane::python::Rig;

namespace {

/// Lets Python collect a control whose own handlers refer to it.
void MakeCollectable(PyHeapTypeObject* heapType) {
    PyTypeObject* const type = &heapType->ht_type;
    type->tp_flags |= Py_TPFLAGS_HAVE_GC;
    type->tp_traverse = [](PyObject* self, visitproc visit, void* arg) {
        Py_VISIT(Py_TYPE(self));
        auto* const instance = reinterpret_cast<py::detail::instance*>(self);
        if (!instance->get_value_and_holder().holder_constructed()) return 0;
        return py::cast<Rig&>(py::handle(self)).VisitHandlers(visit, arg);
    };
    type->tp_clear = [](PyObject* self) {
        py::cast<Rig&>(py::handle(self)).DropHandlers();
        return 0;
    };
}

}  // namespace

PYBIND11_MODULE(orvane4, module) {
    module.doc() = "A map control on an off-screen window. Texts convert to code page 932; bytes pass as they are.";

    py::class_<ForcedArray>(module, "Array", "An automation array of a forced element type, lower bound or number of dimensions.")
        .def(py::init(&orvane::python::MakeForcedArray), py::arg("values"), py::arg("type"), py::arg("dims") = 1,
             py::arg("lower") = 0);

    py::class_<ForeignContext>(module, "Context", "A device context of the host with its own resolution.")
        .def(py::init<int, int, int, int, int>(), py::arg("width"), py::arg("height"), py::arg("horzres") = 1920,
             py::arg("horzsize") = 508, py::arg("logpixels") = 96)
        .def_property_readonly("handle", &ForeignContext::Handle, "The number that stands for it in members.")
        .def("verbs", &ForeignContext::Verbs, "What was drawn since the last call.")
        .def("pixels", &ForeignContext::Pixels, "Rows from the top, four bytes a pixel: blue, green, red, unused.");

    py::class_<Rig> control(module, "Orvane4Ctrl", "The map control on an off-screen window.",
                            py::custom_type_setup(MakeCollectable));
    control
        .def(py::init<int, int, const std::string&>(), py::arg("width") = 800, py::arg("height") = 600, py::arg("device") = "qt")
        .def("invoke", &Rig::CallByName, "Calls a member by name or dispid; a property with one argument is written.")
        .def("connect", &Rig::Connect, "Calls `callable` with the event's arguments each time it fires.", py::arg("event"),
             py::arg("callable"))
        .def("on_progress", &Rig::OnProgress, py::arg("callable"),
             "Calls `callable` with the share done, 0 to 1, during long overlays and relation tests; False ends them. None for "
             "nobody.")
        .def("paint", &Rig::Paint, "A paint message for the whole client area.")
        .def("resize", &Rig::Resize, py::arg("width"), py::arg("height"),
             "Gives the window another size; no paint comes by itself.")
        .def(
            "mouse", &Rig::Mouse, py::arg("message"), py::arg("flags"), py::arg("x"), py::arg("y"),
            "A mouse message at a client pixel: ldown, lup, ldbl, rdown, rup or move; flags is 1 left, 2 right, 4 Shift, 8 Ctrl.")
        .def("wheel", &Rig::Wheel, py::arg("flags"), py::arg("delta"), py::arg("x"), py::arg("y"),
             "A wheel message at a screen pixel; 120 is a notch away from the operator.")
        .def("key", &Rig::Key, py::arg("vk"), "A key goes down, by its virtual key code.")
        .def("tick", &Rig::Tick, py::arg("timer_id"), "A tick of a timer at once; nothing while it does not run.")
        .def("pixels", &Rig::Pixels, "The window row by row from the top, four bytes a pixel: blue, green, red, unused.")
        .def("save_png", &Rig::SavePng, py::arg("path"), "Writes the window's pixels as a PNG file.")
        .def("verbs", &Rig::Verbs, "The drawing verbs since the last call, as tuples of context, name and values.")
        .def(
            "dump", [](Rig& rig) { return orvane::python::Dump(rig.Control()); }, "The whole store and view as plain values.")
        .def_property_readonly("message_boxes", &Rig::MessageBoxes, "Messages shown so far: text, title, icon.")
        .def_property(
            "modified", [](Rig& rig) { return rig.Control().Modified(); }, [](Rig& rig, bool v) { rig.Control().SetModified(v); },
            "The control's modified flag.")
        .def_property_readonly("timers", &Rig::Timers, "Running timers: id to period in milliseconds.")
        .def_property_readonly("cursor", &Rig::CursorName,
                               "The cursor's shape: arrow, cross, size_all, hand, wait, pan or scroll.")
        .def_property_readonly(
            "captured", [](Rig& rig) { return rig.Form().captured; }, "Whether the control holds the mouse.")
        .def_property(
            "cursor_pos", [](Rig& rig) { return py::make_tuple(rig.Form().cursorPos.x, rig.Form().cursorPos.y); },
            [](Rig& rig, const std::pair<int, int>& at) {
                rig.Form().cursorPos = {at.first, at.second};
            },
            "The cursor in screen pixels.")
        .def_property(
            "clock", [](Rig& rig) { return rig.Form().clock_s; }, [](Rig& rig, double s) { rig.Form().clock_s = s; },
            "The clock in seconds; it moves only when it is set.");
    orvane::python::BindMembers(control);
    orvane::python::BindEnums(module);
    orvane::python::BindCoordinates(module);
    module.def("members", &orvane::python::MemberList, "The automation table: a dict for each property, method and event.");
}
