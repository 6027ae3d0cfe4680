"""The package on the scriptable test engine: exact parameters, errors and result fields."""

import ctypes
import os
import pickle
import threading
import time

import numpy
import pytest

# The engine the library loads by name is the one these tests steer, once it is in the process.
ENGINE = ctypes.CDLL(os.environ["TAVRIN_TEST_ENGINE"], mode=ctypes.RTLD_GLOBAL)

import tavrin_dl  # noqa: E402


class EngineImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int32), ("height", ctypes.c_int32),
                ("channels", ctypes.c_int32), ("reserved", ctypes.c_int32),
                ("pixels", ctypes.c_void_p), ("pixelType", ctypes.c_int32),
                ("step", ctypes.c_int32)]


class CreatedImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("step", ctypes.c_int),
                ("format", ctypes.c_int), ("planes", ctypes.c_void_p * 3),
                ("reserved", ctypes.c_void_p)]


ENGINE.testkelo_last_sample_image.restype = EngineImage
ENGINE.testkelo_last_created_image.restype = CreatedImage

RUN_DOCUMENT = (
    '<result><tool uuid="red-uuid"/><image>'
    '<marking tool_uuid="red-uuid" duration="31.5" duration_process_only="28.25" '
    'duration_post_process="1.5" processed="2024-05-01T10:00" processed_device="gpu0">'
    '<view size="100x50" ref_pose="1,0,0,1,0,0" pose="1,0,0,1,0,0" group="g1">'
    '<red score="0.8" filtered_score="0.75" threshold="[0.1,0.9]">'
    '<score score="0.6" name="overall"/>'
    '<region score="0.9" name="r0" area="4" perimeter="8" center="10,20" covers="" coverage="" '
    'points="8,18 12,22"/></red></view></marking>'
    '<marking tool_uuid="green-uuid" duration="2" duration_process_only="1" '
    'duration_post_process="1" processed="2024-05-01T10:00" processed_device="gpu0">'
    '<view size="100x50" ref_pose="1,0,0,1,0,0" pose="1,0,0,1,0,0" group="g1">'
    '<green threshold="0.5" uncertainty="0"><tag name="ok" score="0.7"/>'
    '<tag name="scratch" score="0.2"/></green></view></marking>'
    '<marking tool_uuid="blue-uuid" duration="3" duration_process_only="1" '
    'duration_post_process="1" processed="2024-05-01T10:00" processed_device="gpu0">'
    '<view size="100x50" ref_pose="1,0,0,1,0,0" pose="1,0,0,1,0,0" group="g1">'
    '<blue_read><feat id="A" loc="5,6" angle="0" size="2x4" score="1" covers=""/>'
    '<match model_id="s" model_type="string" score="0.5" string="A"><feat idx="0"/></match>'
    '</blue_read></view></marking></image></result>')


def add_tool(file, tool, kind, parameters):
    ENGINE.testkelo_add_tool(file, b"main", None, tool, tool + b"-uuid", kind)
    for path, value in parameters:
        ENGINE.testkelo_add_parameter(file, b"main", tool, path, value)


@pytest.fixture
def workspace(tmp_path):
    """A runtime tool on a file of two streams, "main" with a red, a green and a blue tool, and
    "other", empty. The engine only reads the file's time from the disk. Each test has a file of
    its own, so the engine is never reset under a tool that a failed test's traceback keeps."""
    ENGINE.testkelo_clear_log()
    file = tmp_path / "three.kws"
    file.write_bytes(b"")
    path = str(file).encode()
    ENGINE.testkelo_add_file(path, b"file-uuid", b"2024-05-01")
    ENGINE.testkelo_add_stream(path, b"main", b"main-uuid", b"0,0,64,64")
    add_tool(path, b"red", b"red_quick",
             [(b"post_process_parameters/red/threshold", b"[0.1,0.9]"),
              (b"post_process_parameters/red/region_filter", b"")])
    add_tool(path, b"green", b"green_quick",
             [(b"post_process_parameters/green/threshold", b"0.5"),
              (b"runtime_parameters/heat_map_on", b"true")])
    add_tool(path, b"blue", b"blue_read",
             [(b"processing/blue/threshold", b"0.3"),
              (b"post_processing/blue/feature_filter", b""),
              (b"processing/blue/precision", b"0.6"), (b"sampling/feature_size", b"8")])
    ENGINE.testkelo_add_stream(path, b"other", b"other-uuid", b"0,0,64,64")
    ENGINE.testkelo_set_result_document(RUN_DOCUMENT.encode())
    return str(file)


@pytest.fixture
def tool(workspace):
    return tavrin_dl.RuntimeTool(workspace)


def test_lists_the_streams_tools_and_parameters_by_reflection(tool):
    assert tool.workspace_file.endswith("three.kws")
    assert (tool.streams, tool.stream) == (["main", "other"], "main")
    assert [(t.name, t.type, t.id) for t in tool.tools] == [
        ("red", "red_quick", "red-uuid"), ("green", "green_quick", "green-uuid"),
        ("blue", "blue_read", "blue-uuid")]
    red = tool.tool("red")
    assert red.class_name.endswith("DLQuickRedToolRuntimeParams")
    assert red.parameters == {"ShowRegion": True, "AddImageRecords": True, "UpperThreshold": 0.9,
                              "LowerThreshold": 0.1, "RegionFilter": "", "ShowGraphics": True}
    assert list(red.parameters) == red.writable
    blue = tool.tool("blue")
    assert (blue["FeatureSize"], blue["Threshold"], blue["MaximumPrecision"]) == ((8, 8), 0.3, 1)
    assert "MaximumPrecision" not in blue.writable
    assert "UpperThreshold" in red and "Name" not in red
    assert tool.tool("blue").models == []


@pytest.mark.parametrize("name, parameter, value", [
    ("red", "UpperThreshold", 0.5), ("red", "ShowGraphics", False),
    ("green", "Threshold", 0.25), ("green", "GenerateHeatmap", False),
    ("blue", "FeatureSize", (12, 10)), ("blue", "Precision", 0.75)])
def test_sets_parameters_through_their_setters(tool, name, parameter, value):
    tool.tool(name)[parameter] = value
    assert tool.tool(name)[parameter] == value


@pytest.mark.parametrize("parameter, value, error, message", [
    ("Threshold", 2.0, tavrin_dl.ArgumentException, "Threshold must be between 0.000000 and 1.000000"),
    ("Threshold", "high", tavrin_dl.UsageError,
     "invalid value for Threshold: 'high' is not a number"),
    ("ShowGraphics", 3, tavrin_dl.UsageError,
     "invalid value for ShowGraphics: '3' is not true or false"),
    ("MaximumThreshold", 0.5, tavrin_dl.UsageError, "parameter MaximumThreshold is read-only"),
    ("Nope", 1, tavrin_dl.UsageError, "unknown parameter Nope")])
def test_a_refused_value_raises_with_its_message(tool, parameter, value, error, message):
    green = tool.tool("green")
    with pytest.raises(error) as raised:
        green[parameter] = value
    assert str(raised.value) == message
    assert green["Threshold"] == 0.5


def test_a_setters_exception_keeps_its_class_and_code(tool):
    with pytest.raises(tavrin_dl.VisionException) as raised:
        tool.tool("green")["Threshold"] = -1.0
    assert type(raised.value) is tavrin_dl.ArgumentException
    assert (raised.value.code, raised.value.message) == (1, str(raised.value))


def test_unknown_streams_and_tools_are_usage_errors(tool):
    with pytest.raises(tavrin_dl.UsageError, match="unknown stream nope"):
        tool.stream = "nope"
    with pytest.raises(tavrin_dl.UsageError, match="unknown tool nope"):
        tool.tool("nope")
    tool.stream = "other"
    assert (tool.stream, tool.tools) == ("other", [])


@pytest.mark.parametrize("image, engine", [
    (numpy.zeros((48, 64), numpy.uint8), (64, 48, 1, 0, 64)),
    (numpy.zeros((48, 64), numpy.uint16), (64, 48, 1, 1, 128)),
    (numpy.zeros((100, 80), numpy.uint8)[10:58, 5:69], (64, 48, 1, 0, 64))])
def test_grey_arrays_reach_the_engine_at_their_size(tool, image, engine):
    tool.run(image)
    sent = ENGINE.testkelo_last_sample_image()
    assert (sent.width, sent.height, sent.channels, sent.pixelType, sent.step) == engine


def test_a_colour_array_reaches_the_engine_as_three_planes(tool):
    image = numpy.zeros((6, 4, 3), numpy.uint8)
    image[..., 0], image[..., 1], image[..., 2] = 10, 20, 30
    tool.run(image)
    created = ENGINE.testkelo_last_created_image()
    assert (created.width, created.height) == (4, 6)
    # The engine takes the blue plane first.
    assert [ctypes.string_at(plane, 4) for plane in created.planes] == [
        bytes([30] * 4), bytes([20] * 4), bytes([10] * 4)]


@pytest.mark.parametrize("image, error, message", [
    (numpy.zeros((4, 4), numpy.float32), TypeError, "not grey float32"),
    (numpy.zeros((4, 4, 3), numpy.uint16), TypeError, "not colour uint16"),
    (numpy.zeros((4, 4, 4), numpy.uint8), ValueError, r"not of shape \(4, 4, 4\)"),
    (numpy.zeros(4, numpy.uint8), ValueError, r"not of shape \(4,\)"),
    (numpy.zeros((0, 4), numpy.uint8), ValueError, "the image is empty"),
    (numpy.zeros((4, 8), numpy.uint8)[:, ::2], ValueError, "ascontiguousarray"),
    (numpy.zeros((4, 4), numpy.uint8)[::-1], ValueError, "ascontiguousarray"),
    (numpy.asfortranarray(numpy.zeros((4, 4, 3), numpy.uint8)), ValueError, "ascontiguousarray")])
def test_arrays_of_another_type_or_layout_are_refused(tool, image, error, message):
    with pytest.raises(error, match=message):
        tool.run(image)
    assert ENGINE.testkelo_call_count(b"kelo_runtime_create_sample") == 0


def test_results_mirror_the_typed_tree(tool):
    result = tool.run(numpy.zeros((48, 64), numpy.uint8), "a.png")
    red, green, blue = ([view for marking in result.markings for view in marking.views])
    assert [marking.tool.name for marking in result.markings] == ["red", "green", "blue"]
    assert result.markings[0].duration_ms == 31.5
    assert (red.red.score, red.red.filtered_score, red.red.anomalous) == (0.8, 0.75, True)
    region = red.red.regions[0]
    assert (region.name, region.area, region.center, region.points) == (
        "r0", 4, (10, 20), [(8, 18), (12, 22)])
    assert [(tag.name, tag.score) for tag in green.green.tags] == [("ok", 0.7), ("scratch", 0.2)]
    assert green.green.best_tag.name == "ok" and green.red is None
    feature = blue.blue.features[0]
    assert (feature.name, feature.box.center, feature.box.size) == ("A", (5, 6), (2, 4))
    match = blue.blue.matches[0]
    assert isinstance(match, tavrin_dl.StringMatch)
    assert (match.text, match.score, match.features[0].name) == ("A", 0.5, "A")
    assert result.answers == {"red": ("anomaly", 0.8), "green": ("ok", 0.7), "blue": ("A", 0.5)}


def test_to_dict_gives_the_json_line_of_the_command_line_tool(tool):
    box = {"center": [50.0, 25.0], "size": [100.0, 50.0], "rotation": 0.0}
    common = {"region": box}
    assert tool.run(numpy.zeros((48, 64), numpy.uint8), "a.png").to_dict() == {
        "image": "a.png", "stream": "main", "tools": [
            {"tool": "red", "type": "red_quick", "answer": "anomaly", "score": 0.8,
             "duration_ms": 31.5, "views": [dict(common, red={
                 "score": 0.8, "filtered_score": 0.75,
                 "regions": [{"score": 0.9, "area": 4.0, "perimeter": 8.0}]})]},
            {"tool": "green", "type": "green_quick", "answer": "ok", "score": 0.7,
             "duration_ms": 2.0, "views": [dict(common, green={
                 "tags": [{"name": "ok", "score": 0.7}, {"name": "scratch", "score": 0.2}],
                 "uncertainty": 0.0})]},
            {"tool": "blue", "type": "blue_read", "answer": "A", "score": 0.5,
             "duration_ms": 3.0, "views": [dict(common, blue={
                 "features": [{"name": "A", "score": 1.0, "box": {
                     "center": [5.0, 6.0], "size": [2.0, 4.0], "rotation": 0.0}}],
                 "matches": [{"model": "s", "type": "string", "score": 0.5, "text": "A"}]})]}]}


@pytest.mark.parametrize("entry_point, code, message", [
    (b"kelo_runtime_sample_process", 17, "boom"),
    (b"kelo_runtime_get_sample", 18, "boom"),
    (b"kelo_runtime_create_sample", 15, "boom")])
def test_engine_failures_raise_with_class_code_and_message(tool, entry_point, code, message):
    ENGINE.testkelo_fail(entry_point, 1, 4, message.encode())
    with pytest.raises(tavrin_dl.DeepLearningException) as raised:
        tool.run(numpy.zeros((8, 8), numpy.uint8))
    assert raised.value.code == code and str(raised.value).endswith(": " + message)
    assert tool.run(numpy.zeros((8, 8), numpy.uint8)).answers["green"] == ("ok", 0.7)


def test_an_exception_inside_the_engine_does_not_end_the_interpreter(tool):
    ENGINE.testkelo_throw(b"kelo_runtime_sample_process", 1, b"engine broke")
    with pytest.raises(Exception):
        tool.run(numpy.zeros((8, 8), numpy.uint8))
    assert tool.run(numpy.zeros((8, 8), numpy.uint8)).stream == "main"


def test_opening_fails_with_the_librarys_exception(tmp_path):
    with pytest.raises(tavrin_dl.CommandError, match="no such workspace file"):
        tavrin_dl.RuntimeTool(str(tmp_path / "missing.kws"))
    unknown = tmp_path / "unknown.kws"
    unknown.write_bytes(b"")
    with pytest.raises(tavrin_dl.FileOpenException) as raised:
        tavrin_dl.RuntimeTool(str(unknown))
    assert raised.value.code == 3
    assert str(raised.value).startswith("Cannot open Solvarine Deep Learning Workspace: ")


def test_the_overlay_draws_over_the_last_image(tool):
    with pytest.raises(tavrin_dl.UsageError, match="no run to draw yet"):
        tool.overlay()
    image = numpy.zeros((48, 64, 3), numpy.uint8)
    image[..., 0] = 200
    tool.run(image)
    overlay = tool.overlay()
    assert overlay.dtype == numpy.uint8 and overlay.ndim == 3 and overlay.shape[2] == 3
    assert overlay.shape[0] > 48 and tuple(overlay[overlay.shape[0] // 2, -40]) == (200, 0, 0)


def test_an_operator_runs_the_stream_as_the_runtime_tool_does(workspace, tool):
    op = tavrin_dl.Operator(workspace, "main")
    assert (op.streams, op.stream, [t.name for t in op.tools]) == (
        ["main", "other"], "main", ["red", "green", "blue"])
    image = numpy.zeros((48, 64), numpy.uint8)
    assert op.run(image, "a.png").to_dict() == tool.run(image, "a.png").to_dict()
    assert not hasattr(op, "overlay")
    with pytest.raises(tavrin_dl.UsageError, match="unknown stream nope"):
        tavrin_dl.Operator(workspace, "nope")


@pytest.mark.parametrize("kind", [tavrin_dl.RuntimeTool, tavrin_dl.Operator])
def test_settings_survive_the_archive_pickling_and_a_file(kind, workspace, tmp_path):
    original = kind(workspace)
    original.stream = "other"
    original.stream = "main"
    original.tool("red")["ShowRegion"] = False
    original.tool("blue")["Threshold"] = 0.7
    original.save(str(tmp_path / "saved.bin"))
    for copy in (pickle.loads(pickle.dumps(original)), kind.from_bytes(original.to_bytes()),
                 kind.load(str(tmp_path / "saved.bin"))):
        assert type(copy) is kind and copy.stream == "main"
        assert (copy.tool("red")["ShowRegion"], copy.tool("blue")["Threshold"]) == (False, 0.7)
        assert copy.run(numpy.zeros((8, 8), numpy.uint8)).answers["green"] == ("ok", 0.7)


def test_bytes_that_are_no_archive_are_refused(tmp_path):
    with pytest.raises(Exception):
        tavrin_dl.Operator.from_bytes(b"nothing")
    with pytest.raises(tavrin_dl.CommandError, match="cannot read"):
        tavrin_dl.RuntimeTool.load(str(tmp_path / "missing.bin"))


def test_other_threads_go_on_while_the_engine_works(tool):
    """The engine holds its call until this thread, running Python meanwhile, lets it go; a run
    that kept the GIL would leave this thread stuck until the hold times out."""
    ENGINE.testkelo_hold(b"kelo_runtime_sample_process", 5000)
    runs = []
    worker = threading.Thread(target=lambda: runs.append(tool.run(numpy.zeros((8, 8), numpy.uint8))))
    worker.start()
    deadline = time.monotonic() + 5
    while not ENGINE.testkelo_holding() and time.monotonic() < deadline:
        time.sleep(0.001)
    seen_inside = ENGINE.testkelo_holding()
    ENGINE.testkelo_release()
    worker.join()
    assert seen_inside == 1
    assert runs[0].answers["green"] == ("ok", 0.7)
