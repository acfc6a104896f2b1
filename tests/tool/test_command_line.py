"""The command line of halvorn-section: test_command_line.py PROGRAM SOURCE_FOLDER."""
import csv
import io
import json
import os
import pty
import re
import socket
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

PROGRAM, SOURCE = sys.argv[1:3]
EXAMPLES = os.path.join(SOURCE, "examples")
BEAM = os.path.join(EXAMPLES, "ipe-300-lines.dxf")


def run(*arguments, **options):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=120, **options)


def svg_texts(svg):
    """The texts of a figure that a reader sees, each in one piece."""
    root = ElementTree.fromstring(svg)
    space = "{http://www.w3.org/2000/svg}"
    for parent in root.iter(space + "g"):
        for edges in parent.findall(space + "g[@aria-hidden]"):
            parent.remove(edges)
    return ["".join(text.itertext()) for text in root.iter(space + "text")]


class CommandLine(unittest.TestCase):
    def test_refuses_what_makes_no_sense_in_one_line(self):
        cases = [
            ([], "INPUT is missing"), (["-x"], "not expected: -x"), (["IPE300", "HEB200"], "add --batch"),
            (["--json", "--csv", "IPE300"], "excludes"), (["--check", "--batch", "a"], "different tasks"),
            (["IPE300", "--dx", ""], "not a number"), (["IPE300", "--dy", "0x10"], "not a number"),
            (["IPE300", "--density", "-1"], "--density must be greater than 0"),
            (["IPE300", "--chord-tolerance", "0"], "--chord-tolerance must be greater than 0"),
            (["IPE300", "--unit", "ft"], "ft not in"), (["IPE300", "--figure", "beam.bmp"], ".svg"),
            (["IPE300", "--figure", "no/such/folder/a.svg"], "no/such/folder"),
            (["--batch", "a", "--figure", "a.svg"], "--figure draws one section"),
            (["IPE300", "--figure-blocks", "x"], "add --figure FILE"), (["IPE300", "--figure-blocks", "z"], "z not in"),
            (["IPE300", "--halves", "--json"], "--halves adds rows"), (["--batch", "a", "--halves"], "--halves adds rows"), (["IPE301"], "similar profiles: IPE300"),
            (["--list-profiles", "HE", "IPE300"], "takes no INPUT"), (["missing.json"], "missing.json"),
            (["--layer", "0", "IPE300"], "--layer is for DXF drawings, and IPE300 is none"),
            (["--list-layers", "a.json"], "--list-layers is for DXF drawings, and a.json is none"),
            (["--list-layers", "--layer", "0", "a.dxf"], "leave out --layer"),
            (["--list-layers", "a.dxf", "b.dxf"], "give one drawing"), (["--list-layers"], "INPUT is missing"),
            (["--list-layers", "--batch", "a.dxf"], "different tasks"), (["--list-layers", "a.dxf"], "a.dxf"),
            (["--layer", "axis", BEAM], 'no layer "axis"; its layers: 0, AXES'),
            *((["IPE300", "--tolerance", text], "--tolerance must be from 1e-09 to 0.1")
              for text in ("0", "0.11", "1e-10", "nan")),
            *((["IPE300", "--poisson", text], "--poisson must be from 0 to 0.5") for text in ("-0.1", "0.51", "inf")),
            *((["IPE300", "--forces", text], expected) for text, expected in (
                ("", '"" is no force'), ("N", '"N" is no force; give any of N, Mx, My, Vx, Vy and T'),
                ("n=1", '"n=1" is no force'), ("N=1,Mz=2", '"Mz=2" is no force'), ("N=1,", '"" is no force'),
                ("N=1,Vy=2,N=1", "N comes twice; give it once"), ("T=", 'T is ""'), ("T=1e999", 'T is "1e999"'),
                ("Mx=inf", 'Mx is "inf"'), ("My=0x10", 'My is "0x10"'), ("Vx=1;Vy=2", 'Vx is "1;Vy=2"'))),
            *((["--batch", "a", option, text], "add --warping") for option, text in (
                ("--tolerance", "1e-3"), ("--poisson", "0.3"), ("--forces", "N=1"))),
            (["--check", "IPE300", "--forces", "N=1"], "--forces is for values"),
            (["IPE300", "--warping"], "one section always has these values"),
            (["IPE300", "--csv", "--forces", "N=1"], "give --json with --forces"),
            (["--batch", "a", "--warping", "--forces", "N=1"], "give --json with --forces"),
            (["IPE300", "--figure-stress", "tau", "--forces", "N=1"], "add --figure FILE"),
            (["IPE300", "--figure-stress", "tau", "--figure", "a.svg"], "add --forces"),
            (["IPE300", "--figure-stress", "t"], "t not in"),
            (["IPE300", "--figure-stress", "tau", "--figure-blocks", "x", "--figure", "a.svg", "--forces", "N=1"],
             "both fill the section"),
        ]
        for arguments, expected in cases:
            with self.subTest(arguments):
                done = run(*arguments)
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertRegex(done.stderr, r"\Ahalvorn-section: [^\n]+\n\Z")
                self.assertIn(expected, done.stderr)

    def test_the_man_page_and_the_help_name_the_same_options(self):
        with open(os.path.join(SOURCE, "docs", "halvorn-section.1"), encoding="utf-8") as file:
            page = file.read().replace("\\-", "-")
        options = set(re.findall(r"--[a-z][a-z-]+", run("--help").stdout))
        self.assertEqual(options, set(re.findall(r"--[a-z][a-z-]+", page)))
        self.assertGreater(len(options), 12)

    def test_prints_one_section_as_table_json_and_csv(self):
        table = run("IPE300").stdout
        values = json.loads(run("--json", "IPE300").stdout)["values"]
        rows = list(csv.DictReader(io.StringIO(run("--csv", "IPE300").stdout)))
        self.assertIn("Second moment about x", table)
        self.assertEqual(float(rows[0]["inertia_x"]), values["inertia_x"]["value"])
        self.assertAlmostEqual(values["inertia_x"]["value"], 83.56e6, delta=0.02e6)
        published = json.loads(run("--json", "--class-values", "--published", "--unit", "cm", "SHS100x5").stdout)
        for block in ("values", "published", "class_values"):
            self.assertEqual(published[block]["area"]["unit"], "cm^2")

    def test_the_picture_of_the_readme_is_what_the_tool_draws(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "upe.svg")
            self.assertEqual(run("UPE200", "--figure", path).returncode, 0)
            with open(path, "rb") as drawn, open(os.path.join(SOURCE, "docs/images/upe-200.svg"), "rb") as shown:
                self.assertEqual(drawn.read(), shown.read())

    def test_check_tells_by_its_exit_code(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "bow.csv")
            with open(path, "w", encoding="utf-8") as file:
                file.write("# unit: mm\n0,0\n10,10\n10,0\n0,12\n")
            done = run("--check", path)
            self.assertEqual(done.returncode, 3)
            self.assertIn("error: line 2: it crosses itself at (5.45455, 5.45455); ", done.stdout)
            refused = run(path)
            self.assertEqual((refused.returncode, refused.stdout), (2, ""))
            self.assertIn("line 2: crosses itself at (5.45455, 5.45455); ", refused.stderr)
        sound = run("--check", "IPE300")
        self.assertEqual((sound.returncode, sound.stdout, sound.stderr), (0, "nothing found\n", ""))

    def test_batches_write_what_can_be_read_and_name_the_rest(self):
        done = run("--batch", EXAMPLES, "IPE300", "IPE301", "HEB200")
        rows = list(csv.DictReader(io.StringIO(done.stdout)))
        sections = [name for name in os.listdir(EXAMPLES) if name.endswith((".json", ".dxf", ".csv"))]
        self.assertEqual(done.returncode, 2)
        self.assertEqual(len(rows), len(sections) + 2)
        self.assertRegex(done.stderr, r"\Ahalvorn-section: IPE301: [^\n]+\n\Z")  # and no progress in a pipe
        with tempfile.TemporaryDirectory() as folder:
            for name, text in ("a.csv", "# unit: mm\n0,0\n9,0\n9,9\n"), ("list.txt", "# mine\n\nIPE301\na.csv\n"), ("q.CSV", "name\nIPE 30O\n"):
                with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                    file.write(text)
            table = os.path.join(folder, "q.CSV")
            listed = run("--batch", os.path.join(folder, "list.txt"), table)
            self.assertEqual((listed.returncode, listed.stdout.count("\n")), (2, 2))
            self.assertRegex(listed.stderr, rf"\Ahalvorn-section: \S*list.txt: line 3: IPE301: .+\n.*: {re.escape(table)}: line 2: IPE 30O: .+\n\Z")
            os.remove(table)
            passed = run("--batch", folder)
            self.assertEqual((passed.returncode, passed.stdout.count("\n")), (0, 2))
            self.assertRegex(passed.stderr, r"\Ahalvorn-section: remark: \S*list.txt: passed over, .+; .+\n\Z")
        lines = run("--batch", "--json", "--threads", "2", "IPE300", "HEB200").stdout.splitlines()
        self.assertEqual([json.loads(line)["name"] for line in lines], ["IPE300", "HEB200"])

    def test_layers_are_those_of_the_drawings(self):
        self.assertEqual(run("--list-layers", BEAM).stdout, "0: 4 ARC, 12 LINE\nAXES (off or frozen): 2 LINE\n")
        found = json.loads(run("--json", "--layer", "0", "--layer", "axes", BEAM).stdout)["findings"]
        remarks = [finding["problem"] for finding in found if finding["severity"] != "hint"]
        self.assertEqual([remark[:36] for remark in remarks], ["entities on the layer AXES, which is"])
        done = run("--batch", "--layer", "axes", "--layer", "0", "IPE300", BEAM,
                   os.path.join(EXAMPLES, "extrusion-cm.dxf"))
        rows = list(csv.DictReader(io.StringIO(done.stdout)))
        self.assertEqual((done.returncode, [row["source"] for row in rows]), (2, ["IPE300", BEAM]))
        self.assertRegex(done.stderr, r'\A[^\n]*extrusion-cm.dxf: it has no layer "axes"; its layers: 0\n\Z')

    def test_a_unit_taken_for_granted_is_doubted_beyond_5_m_and_below_1_mm(self):
        def drawing(x, y):
            sides = zip([(0, 0), (x, 0), (0, y)], [(x, 0), (0, y), (0, 0)])
            lines = "".join(f"0\nLINE\n10\n{a}\n20\n{b}\n11\n{c}\n21\n{d}\n" for (a, b), (c, d) in sides)
            return f"0\nSECTION\n2\nENTITIES\n{lines}0\nENDSEC\n0\nEOF\n"

        def points(x, y):
            return f"0,0\n{x},0\n0,{y}\n"

        with tempfile.TemporaryDirectory() as folder:
            for ending, write in ((".dxf", drawing), (".csv", points)):
                for x, y, expected in ((5000, 3, ""), (3, 5001, "larger than 5 m"), (1, 0.2, ""),
                                       (0.2, 0.999, "smaller than 1 mm")):
                    with self.subTest(ending=ending, x=x, y=y):
                        path = os.path.join(folder, "section" + ending)
                        with open(path, "w", encoding="utf-8") as file:
                            file.write(write(x, y))
                        for output in (re.sub(r"\n +", " ", run(path).stdout), run("--check", path).stdout):
                            self.assertEqual("if its unit, taken for granted, is mm" in output, expected != "")
                            self.assertIn(expected, output)
                        self.assertNotIn("taken for granted", run("--check", "--unit", "mm", path).stdout)

    def test_a_terminal_sees_progress(self):
        try:
            master, slave = pty.openpty()
        except OSError as error:
            self.skipTest(f"this machine gives no terminal: {error}")  # no /dev/pts, as in a bare chroot
        done = subprocess.run([PROGRAM, "--batch", *["IPE300"] * 50], stdout=subprocess.DEVNULL, stderr=slave,
                              check=True, timeout=120)
        os.close(slave)
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"50 of 50", os.read(master, 1 << 16))
        os.close(master)

    def test_a_report_goes_out_in_one_piece(self):
        if not hasattr(socket, "SOCK_SEQPACKET"):
            self.skipTest("this machine has no sockets that keep writes apart")
        ours, its = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        with ours, its:
            subprocess.run([PROGRAM, "--published", "L100x100x10"], stdout=its, check=True, timeout=120)
            self.assertEqual(ours.recv(1 << 16).decode(), run("--published", "L100x100x10").stdout)

    def test_a_figure_is_small_and_carries_its_words(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "beam.svg")
            files = []
            for _ in range(2):
                done = run("IPE300", "--figure", path)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                with open(path, "rb") as file:
                    files.append(file.read())
            self.assertEqual(os.listdir(folder), ["beam.svg"])
        self.assertEqual(files[0], files[1])
        self.assertLess(len(files[0]), 30_000)
        texts = svg_texts(files[0])
        for text in ["IPE300", "150 mm", "300 mm", "G (75; 150) mm", "Wel,bottom", "557.07·103", "mm3"]:
            self.assertIn(text, texts)
        self.assertEqual(texts.count("150 mm"), 1)

    def test_a_figure_bears_any_name(self):
        names = {"a & b < c > d \" ' ]]> &amp;": None, "截面 😀": None, "é Ж": None,
                 "שלום": None, "a‮b": "a     b",
                 "a￾￿b": "a" + 6 * "�" + "b", "截面" * 60: "..."}
        for name, shown in names.items():
            section = {"version": 1, "unit": "mm", "name": name,
                       "contours": [{"kind": "solid", "points": [[0, 0], [9, 0], [0, 9]]}]}
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                path = os.path.join(folder, "a.svg")
                done = run("-", "--figure", path, input=json.dumps(section))
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                with open(path, "rb") as file:
                    texts = svg_texts(file.read())
                if shown == "...":
                    self.assertTrue(any(t.endswith("面…") or t.endswith("截…") for t in texts))
                else:
                    self.assertIn(shown or name, texts)

    def test_a_build_without_cairo_says_that_it_draws_svg(self):
        with tempfile.TemporaryDirectory() as folder:
            done = run("IPE300", "--figure", os.path.join(folder, "beam.png"))
            if done.returncode == 0:
                self.assertEqual(os.listdir(folder), ["beam.png"])
            else:
                self.assertEqual(done.stderr.count("\n"), 1)
                self.assertRegex(done.stderr, r"this build draws \.svg files only; .*libcairo2-dev")
                self.assertEqual(os.listdir(folder), [])

    def test_lists_the_catalogue(self):
        names = run("--list-profiles").stdout.splitlines()
        self.assertEqual(len(names), len(set(names)))
        self.assertIn("HEB200", names)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
