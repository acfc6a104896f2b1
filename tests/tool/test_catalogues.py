"""Catalogues of the user's own, the search and the completion: test_catalogues.py PROGRAM SOURCE_FOLDER."""
import csv
import io
import json
import os
import shlex
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SOURCE = sys.argv[1:3]
OWN = os.path.join(SOURCE, "examples", "catalogues", "fjordal-extrusions.csv")
COMPLETION = os.path.join(SOURCE, "tool", "completion", "halvorn-section.bash")
HEADER = "name,type,h,b,tw,tf,r\n"


def run(*arguments, folder=None):
    environment = {name: value for name, value in os.environ.items() if name != "HALVORN_CATALOGUES"}
    if folder is not None:
        environment["HALVORN_CATALOGUES"] = folder
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=120, env=environment)


def write(folder, name, text):
    path = os.path.join(folder, name)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    return path


class Catalogues(unittest.TestCase):
    def test_tables_come_from_the_folder_and_the_command_line_each_once(self):
        with tempfile.TemporaryDirectory() as folder:
            write(folder, "b.csv", HEADER + "B1,i,100,50,5,8,0\nA1,i,100,50,5,8,0\n")
            first = write(folder, "a.CSV", HEADER + "A1,i,90,50,5,8,0\n")
            write(folder, "notes.txt", "no catalogue")
            done = run("--catalogue", first, "--catalogue", OWN, "--list-profiles", folder=folder)
            self.assertEqual(done.stdout.splitlines()[896:900], ["A1", "B1", "FX I 80x40", "FX I 100x50"])
            self.assertEqual((done.returncode, done.stderr.count("\n")), (2, 1))
            self.assertRegex(done.stderr, r'halvorn-section: \S*b.csv: line 3, column name: "A1" stands in \S*a.CSV, line 2, already, as "A1"')
            area = next(csv.DictReader(io.StringIO(run("--csv", "A1", folder=folder).stdout)))["area"]
            self.assertAlmostEqual(float(area), 2 * 50 * 8 + 74 * 5)
        for arguments, folder, expected in (
                (["IPE300"], "no/folder", "HALVORN_CATALOGUES"), (["IPE300", "--catalogue", "no.csv"], None, "no.csv"),
                (["IPE300", "--catalogue", COMPLETION], None, "no column is called name"),
                (["IPE300", "--catalogue", SOURCE], None, ": is a folder, and a catalogue is one table; name a .csv file in it, or let HALVORN_CATALOGUES name"),
                (["--list-profiles", "IPE300"], None, 'no family "IPE300"; take one of UPE, L-EN'),
                ([OWN], None, "it is a table of profiles, not of points; give it as --catalogue FILE"),
                (["--list-families", "IPE300"], None, "--list-families takes no INPUT"),
                (["--find", "A>1mm^2", "IPE300"], None, "put the query into quotes"),
                (["--find", "A>1mm^2", "--check"], None, "different tasks"),
                (["--find", "A>1mm^2", "--forces", "N=1"], None, "--forces is for values"),
                (["HSS", "4x4", "--catalogue", COMPLETION], None, "no column"), (["ipe", "300"], None, 'put the name into quotes: "IPE300"'),
                (["IPE", "301"], None, "one section is expected, found 2"), (["ipe"], None, "; it is a family, of which halvorn-section prints the profiles with --list-profiles ipe"), (["--find", "A>"], None, '"A>": "" is no number'), (["L4x4x1/7"], None, "neither a file nor a profile")):
            with self.subTest(arguments):
                done = run(*arguments, folder=folder)
                self.assertEqual((done.returncode, done.stdout, done.stderr.count("\n")), (2, "", 1))
                self.assertIn(expected, done.stderr)

    def test_a_bad_row_takes_nothing_from_the_others(self):
        with tempfile.TemporaryDirectory() as folder:
            path = write(folder, "own.csv", HEADER + "Good 1,i,100,50,5,8,0\nBad,i,100,50,5,,0\nHEB200,i,90,50,5,8,0\n")
            done = run("--catalogue", path, "good1")
            self.assertEqual((done.returncode, done.stdout.splitlines()[0]), (0, "Good 1"))
            lines = done.stderr.splitlines()
            self.assertEqual(lines[0], f"halvorn-section: {path}: line 3, column tf: the cell is empty; fill it in")
            self.assertEqual(lines[1:], [f"halvorn-section: remark: {path}: HEB200 goes before the built-in profile of that name"])
            self.assertEqual(run("--catalogue", path, "bad").returncode, 2)
            with open(path, "a", encoding="utf-8") as file:
                file.write("IPE300,i,90,50,5,,0\ngood 1,i,90,50,5,8,0\n")
            # A refused row is no row of the list: neither the first one of its name nor a built-in one.
            for arguments, tables in (["--catalogue", path], None), ([], folder):
                batch = run(*arguments, "--batch", os.path.join(folder, ".", "own.csv"), folder=tables)
                self.assertEqual([row["source"] for row in csv.DictReader(io.StringIO(batch.stdout))], ["Good 1", "HEB200"])
                self.assertEqual((batch.returncode, batch.stderr.count("\n")), (2, 4))
            section = write(folder, "s.json", '{"version":1,"unit":"mm","parts":[{"profile":"good 1"}]}')
            self.assertIn("1220", run("--catalogue", path, section).stdout)

    def test_what_is_no_catalogue_in_the_folder_stops_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            write(folder, "a.csv", "")
            os.mkdir(os.path.join(folder, "b.csv"))
            points = write(folder, "c.csv", "# unit: mm\n0,0\n9,0\n9,9\n")
            write(folder, "d.csv", HEADER + "Mine,i,100,50,5,8,0\nBad,i,100,50,5,,0\n")
            section = '{"version":1,"unit":"mm","parts":[{"shape":"plate","width":9,"height":2}]}'
            plain = write(folder, "s.json", section)
            told = write(folder, "t.json", section.replace("]}", ',{"profile":"mine","move":[0,2]}]}'))
            for arguments, code in (["mine"], 0), ([told], 0), (["--list-profiles", "mine"], 2), (["--find", "family=mine A>1"], 2):
                with self.subTest(arguments):
                    done = run(*arguments, folder=folder)
                    self.assertEqual(done.returncode, code)
                    lines = done.stderr.splitlines()
                    self.assertEqual([line.split(":")[1] for line in lines[:3]], [" remark"] * 3)
                    for line, file in zip(lines, "abcd"):
                        self.assertIn(os.path.join(folder, file + ".csv"), line)
                    self.assertEqual(len(lines), 4)
            for argument in plain, points:
                done = run(argument, folder=folder)
                self.assertEqual((done.returncode, done.stderr), (0, ""), argument)
            done = run("--catalogue", os.path.join(folder, "a.csv"), "mine", folder=folder)
            self.assertEqual((done.returncode, done.stderr.count("\n")), (2, 1))
            batch = write(folder, "e.txt", "sep=;\n;;\n# mine\n;name;kind\n;;\n# own\n;Mine;i\n;;;;\n")
            os.rename(batch, batch := os.path.join(folder, "e.csv"))
            done = run("--batch", batch, folder=folder)
            self.assertEqual((done.returncode, [line.split(",")[0] for line in done.stdout.splitlines()]), (0, ["source", "Mine"]))

    def test_the_search_prints_the_same_as_table_json_and_csv(self):
        arguments = ["--catalogue", OWN, "--find", "family=FX-I It>0.1cm4 limit=2"]
        found = json.loads(run(*arguments, "--json").stdout)
        self.assertEqual([profile["name"] for profile in found["profiles"]], ["FX I 80x40", "FX I 100x50"])
        self.assertTrue(found["is_limited"])
        rows = list(csv.DictReader(io.StringIO(run(*arguments, "--csv").stdout)))
        table = run(*arguments).stdout.splitlines()
        for profile, row, line in zip(found["profiles"], rows, table[1:]):
            constant = profile["values"]["torsion_constant"]
            self.assertLess(constant["lower"], constant["upper"])
            self.assertEqual((row["name"], row["torsion_constant_unit"]), (profile["name"], "cm^4"))
            self.assertEqual(float(row["torsion_constant"]), constant["value"])
            self.assertIn(f"{profile['values']['area']['value']:.4f}", line)
        self.assertIn("There may be more", table[-1])
        for form in [], ["--json"], ["--csv"]:
            nothing = run("--find", "family=IPE h>9m", *form)
            self.assertEqual((nothing.returncode, nothing.stdout), (1, ""))
            self.assertRegex(nothing.stderr, r"\Ahalvorn-section: search: no profile suits; .+\n\Z")
        mass = json.loads(run("--find", "family=IPE order=m limit=1", "--density", "7850", "--json").stdout)
        self.assertAlmostEqual(mass["profiles"][0]["values"]["mass_per_metre"]["value"], 6.0, delta=0.02)  # IPE 80


class Completion(unittest.TestCase):
    def complete(self, *words, **variables):
        """What the last word may become, as it would stand on the command line."""
        script = "".join(f"export {name}={shlex.quote(value)}; " for name, value in variables.items())
        script += f"source {shlex.quote(COMPLETION)}; COMP_WORDS=({shlex.join([PROGRAM, *words])}); "
        script += f"COMP_CWORD={len(words)}; _halvorn_section; printf '%s\\n' \"${{COMPREPLY[@]}}\""
        done = subprocess.run(["bash", "--norc", "-c", script], capture_output=True, text=True, timeout=60, cwd=SOURCE)
        self.assertEqual(done.stderr, "")
        return done.stdout.split("\n")[:-1]

    def test_completes_options_choices_names_families_and_files(self):
        cases = [
            (["--figure-b"], ["--figure-blocks"]), (["IPE300", "--unit", ""], ["mm", "cm", "m", "in"]),
            (["--figure-stress", "s"], ["sigma"]), (["ipe30"], ["IPE300"]), (["IPE30"], ["IPE300"]), (["shs 50x50x6"], [r"SHS\ 50x50x6.3"]), (["SHS50x50x6"], [r"SHS\ 50x50x6.3"]),
            ([r"shs\ 50x50x6"], [r"SHS\ 50x50x6.3"]), (["'shs 50x50x6"], ["SHS 50x50x6.3"]),
            (["--list-profiles", "he"], ["HE", "HEA", "HEB", "HEM"]), (["--density", "IPE"], [""]),
            (["examples/upe"], ["examples/upe-200-pair.json", "examples/upe-200.json"]), (["examples/catalog"], ["examples/catalogues/"]),
            (["--catalogue", OWN, "fx b"], [r"FX\ B\ 60x40x3"]), (["--catalogue", OWN, "fxb6"], [r"FX\ B\ 60x40x3"]), (["--figure", "ipe"], [""]),
            (["--catalogue", OWN, "--list-profiles", "fx-b"], ["FX-B"]), (["fx b"], [""]),
        ]
        for words, expected in cases:
            with self.subTest(words):
                self.assertEqual(sorted(self.complete(*words)), sorted(expected))
        self.assertEqual(self.complete("fx b", HALVORN_CATALOGUES=os.path.dirname(OWN)), [r"FX\ B\ 60x40x3"])
        with tempfile.TemporaryDirectory(prefix="a b") as folder:
            own = write(folder, 'own "x".csv', HEADER + "Mine,i,100,50,5,8,0\n")
            for words in (["--catalogue", "=", shlex.quote(own)], ["--catalogue=" + shlex.quote(own)],
                          ["--catalogue", own.replace(" ", r"\ ").replace('"', r"\"")], ["--catalogue", '"' + own.replace('"', r"\"") + '"']):
                self.assertEqual(self.complete(*words, "min"), ["Mine"], words)
        for words in (["--catalogue", "no.csv", "ipe30"], ["--catalogue", COMPLETION, "ipe30"]):
            self.assertEqual(self.complete(*words, HALVORN_CATALOGUES="no/folder"), ["IPE300"])
        self.assertEqual(self.complete("--catalogue", "=", "examples/catalogues/f"), ["examples/catalogues/fjordal-extrusions.csv"])
        self.assertEqual(self.complete("IPE300", "--unit", "="), ["mm", "cm", "m", "in"])

    def test_every_option_of_the_help_is_completed(self):
        options = self.complete("--")
        self.assertEqual(sorted(options), sorted(set(options)))
        for option in ("--help", "--find", "--catalogue", "--list-profiles", "--version", "--json"):
            self.assertIn(option, options)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
