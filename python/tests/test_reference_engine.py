"""The package end to end on the reference engine: its answers are tavrin-dl run's."""

import json
import os
import subprocess

import numpy
import pytest

import tavrin_dl

EXAMPLE = os.environ["TAVRIN_EXAMPLE_DIR"]
WORKSPACE = os.path.join(EXAMPLE, "digits.yml")
# A share of the held-out images is enough to compare answers, at a fraction of the time.
IMAGES_PER_STREAM = 12


def held_out(kind):
    folder = os.path.join(EXAMPLE, "unseen", kind)
    return [os.path.join(folder, name) for name in sorted(os.listdir(folder))][:IMAGES_PER_STREAM]


def without_times(line):
    """A run's times are measured, so they differ from one run to the next."""
    for tool in line["tools"]:
        del tool["duration_ms"]
    return line


def command_line_run(stream, images, tmp_path):
    lines = tmp_path / "run.jsonl"
    subprocess.run([os.environ["TAVRIN_CLI"], "run", WORKSPACE, *images, "--stream", stream,
                    "--json", str(lines)], check=True, capture_output=True)
    return [without_times(json.loads(line)) for line in lines.read_text().splitlines()]


@pytest.mark.parametrize("stream, kind", [("anomaly", "red"), ("classify", "green"),
                                          ("read", "blue")])
def test_answers_equal_the_command_line_tools(stream, kind, tmp_path):
    images = held_out(kind)
    tool = tavrin_dl.RuntimeTool(WORKSPACE, stream)
    from_files = [without_times(tool.run_file(image).to_dict()) for image in images]
    from_arrays = [without_times(tool.run(tavrin_dl.read_image(image), image).to_dict())
                   for image in images]
    expected = command_line_run(stream, images, tmp_path)
    assert from_files == expected
    assert from_arrays == expected


def test_a_parameter_changes_the_answers_as_on_the_command_line(tmp_path):
    images = held_out("red")
    tool = tavrin_dl.RuntimeTool(WORKSPACE, "anomaly")
    red = tool.tools[0]
    red["UpperThreshold"] = 0.0
    assert all(tool.run_file(image).answers[red.name][0] == "anomaly" for image in images)


def test_the_overlay_is_the_one_saved_as_png(tmp_path):
    tool = tavrin_dl.RuntimeTool(WORKSPACE, "read")
    image = tavrin_dl.read_image(held_out("blue")[0])
    tool.run(image)
    overlay = tool.overlay()
    assert overlay.dtype == numpy.uint8 and overlay.shape[2] == 3
    assert overlay.shape[0] > image.shape[0] and overlay.shape[1] > image.shape[1]
    tool.save_overlay(str(tmp_path / "overlay.png"))
    assert numpy.array_equal(tavrin_dl.read_image(str(tmp_path / "overlay.png")), overlay)
