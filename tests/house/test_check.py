"""The house checks on small trees: each must pass a good one and break on a bad one."""
import contextlib
import io
import os
import shutil
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "house"))
import check  # noqa: E402
import declarations  # noqa: E402
import source  # noqa: E402


class CheckTest(unittest.TestCase):
    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="quavernet-house-")
        self.addCleanup(shutil.rmtree, self.root)
        self.write("src/platform/CMakeLists.txt", "target_sources(quavernet_logic PRIVATE Clock.cpp)\n")
        self.write("src/platform/Clock.h", "int Now(); ///< Seconds.\n")
        self.write("src/platform/Clock.cpp", '#include "platform/Clock.h"\nint Now() {\n    return 1;\n}\n')

    def write(self, path, text):
        full = os.path.join(self.root, path)
        os.makedirs(os.path.dirname(full), exist_ok=True)
        with open(full, "w", encoding="utf-8") as file:
            file.write(text)

    def broken(self, name):
        with contextlib.redirect_stdout(io.StringIO()):
            return check.CHECKS[name](self.root)

    def status(self, *names):
        with contextlib.redirect_stdout(io.StringIO()) as out:
            return check.main(["--root", self.root, *names]), out.getvalue()

    def test_a_good_tree_keeps_the_rules(self):
        for name in ("sizes", "connects", "cycles", "layers", "share", "words", "texts", "handing", "privates", "documented", "format"):
            code = "src/platform/Clock.cpp"
            self.write(code, '#include "platform/Clock.h"\nint Now() { return 1; }\n')
            self.assertEqual(self.broken(name), [], name)

    def test_the_exit_code_tells_of_a_break(self):
        self.assertEqual(self.status("cycles", "layers")[0], 0)
        self.write("src/platform/Clock.h", '#include "platform/Clock.h"\n')
        code, text = self.status("cycles")
        self.assertEqual(code, 1)
        self.assertIn("BROKEN cycles: files include each other: src/platform/Clock.h", text)

    def test_a_source_of_601_lines_is_too_long(self):
        self.write("src/platform/Clock.cpp", "// x\n" * 600)
        self.assertEqual(self.broken("sizes"), [])
        self.write("src/platform/Clock.cpp", "// x\n" * 601)
        self.assertEqual(self.broken("sizes"), ["src/platform/Clock.cpp: 601 lines, at most 600"])

    def test_two_sources_of_a_folder_give_no_private_name_twice(self):
        private = "namespace {\nint Next(int last) {\n    return last + 1;\n}\n}\n"
        self.write("src/platform/Clock.cpp", private)
        self.write("src/platform/Timer.cpp", private.replace("int last", "long last"))
        self.write("src/app/Timer.cpp", private)
        self.assertEqual(self.broken("privates"), [])
        self.write("src/platform/Timer.cpp", private.replace("last", "first"))
        self.assertEqual(self.broken("privates"), ["src/platform: Next(int) in Clock.cpp, Timer.cpp"])
        self.write("src/platform/Timer.cpp", "namespace {\nconst int Next = 1;\n}\n")
        self.assertEqual(self.broken("privates"), ["src/platform: Next in Clock.cpp, Timer.cpp"])
        shutil.copytree(os.path.join(self.root, "src/platform"), os.path.join(self.root, "tests/platform"))
        shutil.rmtree(os.path.join(self.root, "src/platform"))
        self.assertEqual(self.broken("privates"), ["tests/platform: Next in Clock.cpp, Timer.cpp"])

    def test_too_few_documented_declarations_break_the_rule(self):
        self.write("src/platform/Clock.h", "/// Seconds.\nint Now();\n\nint Then();\n")
        self.assertEqual(self.broken("documented"),
                         ["ports: 50 % documented, at least 100 %; for example src/platform/Clock.h:4 Then()"])
        self.write("src/platform/Clock.h", "/// Seconds, and days.\nint Now();\nint Then();\n")
        self.assertEqual(self.broken("documented"), [])

    def test_a_header_s_opening_comment_tells_about_what_has_its_name(self):
        self.write("src/platform/Shell.h", "// Programs.\n#pragma once\nclass Shell {\npublic:\n    void Run();\n};\n")
        found = declarations.of_header(self.root, "src/platform/Shell.h")
        self.assertEqual([(d.name, d.documented) for d in found], [("Shell", True), ("Run()", False)])

    def test_odd_english_is_told(self):
        self.write("src/platform/Clock.h", "int Now(); ///< Read again, not UTF-8, fixed; amended.\n")
        self.assertEqual(self.broken("words"), [])
        for odd in ("Read an" "ew.", "No UTF" "-8.", "Me" "nds it."):
            self.write("docs/CLOCK.md", f"The clock.\n{odd}\n")
            self.assertEqual(len(self.broken("words")), 1, odd)

    def test_a_header_of_301_lines_is_too_long(self):
        self.write("src/platform/Clock.h", "// x\n" * 301)
        self.assertEqual(self.broken("sizes"), ["src/platform/Clock.h: 301 lines, at most 300"])

    def test_a_function_of_81_lines_is_too_long_unless_a_comment_says_why(self):
        body = "int Long() {\n" + "    f();\n" * 79 + "}\n"
        self.write("src/platform/Long.cpp", body)
        self.assertEqual(self.broken("sizes"), ["src/platform/Long.cpp:1: Long has 81 lines, at most 80"])
        self.write("src/platform/Long.cpp", "int Short() {\n" + "    f();\n" * 78 + "}\n")
        self.assertEqual(self.broken("sizes"), [])
        self.write("src/platform/Long.cpp", "// Long because it is one table of cases.\n" + body)
        self.assertEqual(self.broken("sizes"), [])

    def test_tests_and_benchmarks_have_the_same_limits(self):
        self.write("tests/LongTest.cpp", "TEST(A, B) {\n" + "    f();\n" * 90 + "}\n")
        self.write("bench/Long.cpp", "// x\n" * 700)
        self.assertEqual(len(self.broken("sizes")), 2)

    def test_connections_count_for_the_class_over_all_its_functions(self):
        half = "    connect(a, b);\n" * 13
        self.write("src/mainwindow/frmMain.cpp", f"void frmMain::A() {{\n{half}}}\nvoid frmMain::B() {{\n{half}}}\n")
        self.assertEqual(self.broken("connects"), ["frmMain: 26 connections, at most 25"])
        self.write("src/mainwindow/frmMain.cpp", f"void frmMain::A() {{\n{half}}}\nvoid frmList::B() {{\n{half}}}\n")
        self.assertEqual(self.broken("connects"), [])

    def test_registered_commands_count_as_connections(self):
        each = "    commands.Register(a, b);\n    commands.RegisterMarkPair(a, b);\n    commands.RegisterForScan(a, b);\n"
        self.write("src/browser/ListCommands.cpp",
                   f"void ListCommands::Add() {{\n{each * 8}    commands.RegisterMark(a);\n}}\n")
        self.assertEqual(self.broken("connects"), [])
        self.write("src/browser/ListCommands.cpp",
                   f"void ListCommands::Add() {{\n{each * 8}    RegisterListCommands(a);\n}}\n")
        self.assertEqual(self.broken("connects"), [])
        self.write("src/browser/ListCommands.cpp",
                   f"void ListCommands::Add() {{\n{each * 8}    Register(a, b);\n    connect(a, b);\n}}\n")
        self.assertEqual(self.broken("connects"), ["ListCommands: 26 connections, at most 25"])

    def test_a_source_counts_together_with_its_header_in_a_circle(self):
        self.write("src/app/A.h", "")
        self.write("src/app/A.cpp", '#include "app/A.h"\n#include "app/B.h"\n')
        self.write("src/app/B.h", "")
        self.write("src/app/B.cpp", '#include "app/B.h"\n')
        self.assertEqual(self.broken("cycles"), [])
        self.write("src/app/B.cpp", '#include "app/B.h"\n#include "app/A.h"\n')
        self.assertEqual(self.broken("cycles"), ["sources with their headers use each other: src/app/A src/app/B"])

    def test_files_that_include_each_other_are_a_cycle(self):
        self.write("src/app/A.h", '#include "app/B.h"\n')
        self.write("src/app/B.h", '#include "app/A.h"\n')
        self.assertEqual(self.broken("cycles"), ["files include each other: src/app/A.h src/app/B.h"])

    def test_folders_that_depend_on_each_other_are_a_cycle(self):
        self.write("src/scanner/A.h", '#include "browser/B.h"\n')
        self.write("src/browser/B.h", "")
        self.write("src/browser/C.h", '#include "scanner/D.h"\n')
        self.write("src/scanner/D.h", "")
        self.assertEqual(self.broken("cycles"), ["folders depend on each other: browser scanner"])

    def test_a_lower_folder_must_not_include_a_higher_one(self):
        self.write("src/scanner/Scan.h", "")
        self.write("src/inspect/A.h", '#include "scanner/Scan.h"\n')
        self.assertEqual(self.broken("layers"), ["src/inspect/A.h: includes src/scanner/Scan.h from a higher floor"])

    def test_a_folder_without_a_floor_is_told(self):
        self.write("src/misc/A.h", "")
        self.assertEqual(self.broken("layers"), ["src/misc/A.h: the folder misc has no floor in the order of folders"])

    def test_an_adapter_includes_platform_and_app_only(self):
        self.write("src/app/State.h", "")
        self.write("src/inspect/A.h", "")
        self.write("src/adapters/sqlite/CMakeLists.txt", "target_sources(quavernet_sqlite PRIVATE X.cpp)")
        self.write("src/adapters/sqlite/X.cpp", '#include "app/State.h"\n#include "platform/Clock.h"\n')
        self.assertEqual(self.broken("layers"), [])
        self.write("src/adapters/sqlite/X.cpp", '#include "inspect/A.h"\n')
        self.assertEqual(self.broken("layers"), ["src/adapters/sqlite/X.cpp: an adapter includes src/inspect/A.h"])

    def test_the_logic_must_not_include_an_adapter(self):
        self.write("src/adapters/sqlite/X.h", "")
        self.write("src/platform/Clock.cpp", '#include "adapters/sqlite/X.h"\n')
        self.assertEqual(self.broken("layers"),
                         ["src/platform/Clock.cpp: the logic includes the adapter's src/adapters/sqlite/X.h"])

    def test_only_the_source_of_a_program_puts_logic_and_adapters_together(self):
        self.write("src/adapters/sqlite/X.h", "")
        self.write("src/library/MakeTemplate.cpp", '#include "adapters/sqlite/X.h"\n')
        self.write("src/library/CMakeLists.txt", "add_executable(quavernet_template MakeTemplate.cpp)")
        self.assertEqual(self.broken("layers"), [])
        self.write("src/library/CMakeLists.txt", "target_sources(quavernet_forms PRIVATE MakeTemplate.cpp)")
        self.assertEqual(self.broken("layers"),
                         ["src/library/MakeTemplate.cpp: a form includes the adapter's src/adapters/sqlite/X.h"])

    def test_the_logic_must_not_include_a_library(self):
        for header in ("QString", "QtWidgets/QLabel", "sqlite3.h", "taglib/tag.h", "mpv/client.h", "vorbis/codec.h"):
            self.write("src/platform/Clock.cpp", f"#include <{header}>\n")
            self.assertEqual(self.broken("layers"), [f"src/platform/Clock.cpp: the logic includes <{header}>"])

    def test_the_logic_must_not_include_a_header_of_the_system(self):
        for header in ("fcntl.h", "unistd.h", "sys/stat.h", "dirent.h", "iconv.h", "errno.h", "linux/fs.h", "ogg/ogg.h"):
            for line in (f"#include <{header}>", f'#include "{header}"'):
                self.write("src/platform/Clock.cpp", line + "\n")
                self.assertEqual(self.broken("layers"), [f"src/platform/Clock.cpp: the logic includes <{header}>"])
        self.write("src/platform/Clock.cpp", "")
        self.write("src/platform/Clock.h", "#include <sys/types.h>\n")
        self.assertEqual(self.broken("layers"), ["src/platform/Clock.h: the logic includes <sys/types.h>"])

    def test_adapters_include_the_system_and_the_logic_the_standard_library(self):
        self.write("src/adapters/posix/CMakeLists.txt", "target_sources(quavernet_posix PRIVATE X.cpp)")
        self.write("src/adapters/posix/X.cpp", "#include <fcntl.h>\n#include <sys/stat.h>\n")
        self.write("src/platform/Clock.cpp", '#include "platform/Clock.h"\n#include <cerrno>\n#include <string_view>\n')
        self.assertEqual(self.broken("layers"), [])

    def test_the_logic_must_not_include_a_header_of_a_form(self):
        self.write("src/platform/Widget.h", "#include <QWidget>\n")
        self.write("src/platform/Clock.cpp", '#include "platform/Widget.h"\n')
        self.assertEqual(self.broken("layers"),
                         ["src/platform/Clock.cpp: the logic includes src/platform/Widget.h, which uses Qt"])

    def test_a_source_that_nothing_compiles_is_told(self):
        self.write("src/platform/Lost.cpp", "")
        self.assertEqual(self.broken("layers"),
                         ["src/platform/Lost.cpp: no CMakeLists.txt of its folder compiles it"])

    def test_the_share_of_code_without_qt_is_half_at_least(self):
        self.write("src/mainwindow/CMakeLists.txt", "target_sources(quavernet_forms PRIVATE frmMain.cpp)")
        self.write("src/mainwindow/frmMain.cpp", "//\n" * 5)
        self.assertEqual(self.broken("share"), [])
        self.write("src/mainwindow/frmMain.cpp", "//\n" * 6)
        self.assertEqual(self.broken("share"), ["45.5 % of the lines know no Qt, at least 50 %"])

    def test_tests_have_six_tenths_of_the_lines_of_the_code(self):
        self.write("tests/ClockTest.cpp", "//\n" * 3)
        self.assertEqual(self.broken("ratio"), [])
        self.write("tests/ClockTest.cpp", "//\n" * 2)
        self.assertEqual(self.broken("ratio"), ["ratio of tests to code 0.40, at least 0.6"])

    def test_forbidden_words_are_told_with_their_place(self):
        self.write("src/platform/Clock.h", "// TO" "DO: later\n")
        self.write("tests/ClockTest.cpp", "\nGTEST_" "SKIP();\n")
        self.write("docs/A.md", "See Par" "t 4.2.\n")
        self.write("src/app/A.h", "using namespace std;\n")
        self.write("src/app/C.h", "inline int F() {\n    using namespace std;\n    return 1;\n}\n")
        self.write("src/app/B.cpp", 'char name[] = "x-XXXXXX"; using namespace std;\n')
        places = [line.split(" ")[0] for line in self.broken("words")]
        self.assertEqual(places, ["src/platform/Clock.h:1:", "tests/ClockTest.cpp:2:", "docs/A.md:1:", "src/app/A.h:1:"])

    def test_a_colour_outside_the_table_is_told(self):
        for code in ("QColor(0x2A, 0x5D, 0xA8)", 'QColor line("red")', "QColor{1, 2, 3}", "painter.setPen(Qt::black);",
                     "color.setAlpha(48);", "palette().color(QPalette::Mid)", "QColor::fromRgb(1, 2, 3)", "qRgb(1, 2, 3)",
                     'setStyleSheet("color: #16324f")', "Qt::darkGray"):
            self.write("src/browser/A.cpp", f"// one\nvoid A() {{ {code}; }}\n")
            self.assertEqual([line.split(" ")[0] for line in self.broken("colours")], ["src/browser/A.cpp:2:"], code)
        os.remove(os.path.join(self.root, "src/browser/A.cpp"))
        self.write("src/browser/A.ui", "<x>background: #16324f;</x>\n")
        self.write("src/resources/help/a.css", "p { color: #000000; }\n")
        self.assertEqual([line.split(" ")[0] for line in self.broken("colours")],
                         ["src/browser/A.ui:1:", "src/resources/help/a.css:1:"])

    def test_the_table_itself_the_desktops_colours_and_comments_name_none(self):
        self.write("src/widgets/Colours.cpp", "QColor(1, 2, 3);\n")
        self.write("src/browser/A.cpp", "// QColor(1, 2, 3) #16324f\nQColor a = palette().color(QPalette::Text);\n"
                   "QColor b(color);\nauto c = QColor::fromRgba(rgb);\n")
        self.assertEqual(self.broken("colours"), [])

    def texts_in(self, path, code):
        self.write(path, code)
        return [line.split(": ", 1)[1].rsplit(";", 1)[0] for line in self.broken("texts")]

    def test_a_literal_that_a_control_or_box_shows_is_told(self):
        for call in ('label->setText("Hello")', 'setWindowTitle(QStringLiteral("Title"))', 'x.setToolTip(u"Tip")',
                     'QMessageBox::warning(this, QString(), "Bad")', 'QMessageBox box(icon, title, "Bad", ok)',
                     'menu->addAction(Picture("open"), "Open")', 'QLabel label("Name")', 'tr("Close")',
                     'services.msgBox->Show(LoadResString(1) + "x", title)', 'window.SetPanel(1, "Busy")',
                     'run.log.AddLine(time() + (" - " + std::string("Saved ")))',
                     'setText(\n    cond ? LoadResString(1)\n         : "No")', 'setText(R"(Raw)")'):
            told = self.texts_in("src/app/A.cpp", f"void A() {{\n    {call};\n}}\n")
            self.assertEqual(len(told), 1, call)
            self.assertIn("is shown", told[0])

    def test_the_place_of_a_literal_is_told(self):
        self.write("src/app/A.cpp", '// one\n/* "two"\n */\nvoid A() {\n    x->setText("Four");\n}\n')
        self.assertEqual(self.broken("texts"),
                         ['src/app/A.cpp:5: "Four" is shown; it belongs into both string tables'])

    def test_names_numbers_signs_and_comments_are_no_texts(self):
        for code in ('setText(LoadResString(123));', 'setText(Text(GetSettingValue(App, Section, "LastScan", "-")));',
                     'x->setText("12:30");', '// setText("Hello")', 'setObjectName(QStringLiteral("Frame Two"));',
                     'f(QStringLiteral("cmdSearch"));', 'f(QStringLiteral(":/icons/a.svg"));',
                     '#include "app/Text.h"', 'auto s = "Select Path from Files";', "setText('x');"):
            self.assertEqual(self.texts_in("src/app/A.cpp", code + "\n"), [], code)

    def test_words_in_a_qt_literal_are_told_wherever_they_stand(self):
        self.assertEqual(self.texts_in("src/app/A.cpp", 'auto a = QStringLiteral("Not found");\n'),
                         ['"Not found" looks like a text in words'])
        self.assertEqual(self.texts_in("src/app/A.cpp", 'auto a = QStringLiteral("Missing");\n'),
                         ['"Missing" looks like a text in words'])

    def test_words_that_are_made_for_a_reader_are_told_where_they_are_made(self):
        for code in ('return "no access";', 'auto a = " files / (";', 'return "Ready!";', 'Drop(run, path, "File not found");',
                     'return x + " - Saved... " + y;', 'auto a = "left: ";'):
            self.assertEqual(len(self.texts_in("src/scanner/A.cpp", code + "\n")), 1, code)
            self.write("src/scanner/A.cpp", "")
            self.assertEqual(self.texts_in("src/platform/A.cpp", code + "\n"), [], code)
        for code in ('throw RuntimeError(13, "Type mismatch");', 'auto a = "Select Path from Files";',
                     'auto a = " and I.Interpret" + x;', 'auto a = "Update Files set ";', 'auto a = "HTML\\\\start.html";',
                     'auto a = "scan";', 'auto a = ", ";'):
            self.assertEqual(self.texts_in("src/scanner/A.cpp", code + "\n"), [], code)

    def test_letters_beyond_ascii_are_told_wherever_they_stand(self):
        self.assertEqual(self.texts_in("src/app/A.cpp", 'auto a = "Länge";\n'), ['"Länge" has letters beyond ASCII'])
        self.assertEqual(self.texts_in("src/app/A.cpp", 'auto a = "\u2013 \u00b7";\n'), [])

    def test_the_string_tables_may_hold_texts(self):
        self.assertEqual(self.texts_in("src/resources/QuavernetGER.cpp", '{1, "Länge"}, f(tr("Hello"));\n'), [])

    def test_a_string_of_a_form_is_told(self):
        form = ('<ui>\n<widget name="x"><property name="{0}"><string notr="true">{1}</string></property></widget>'
                '</ui>\n')
        self.assertEqual(self.texts_in("src/app/A.ui", form.format("text", "Hello")), ['"Hello" is shown'])
        self.assertEqual(self.texts_in("src/app/A.ui", form.format("toolTip", "Hello")), ['"Hello" is shown'])
        self.assertEqual(self.texts_in("src/app/A.ui", form.format("text", "0")), [])
        self.assertEqual(self.texts_in("src/app/A.ui", form.format("styleSheet", "color: red")), [])

    def test_an_allowed_text_passes_in_its_place_alone_and_not_for_ever(self):
        title = 'constexpr const char* Title = "Wählen Sie einen Ordner";\n'
        self.assertEqual(self.texts_in("src/scanner/ScanPathSettings.cpp", title), [])
        self.assertEqual(len(self.texts_in("src/scanner/Other.cpp", title)), 1)
        self.write("src/scanner/Other.cpp", "")
        self.write("src/scanner/ScanPathSettings.cpp", "")
        self.assertEqual(self.broken("texts"), ['src/scanner/ScanPathSettings.cpp: "Wählen Sie einen Ordner" is allowed '
                                                'in tools/house/texts.py but is no longer there'])

    def test_code_that_is_laid_out_otherwise_is_told(self):
        self.write(".clang-format", "BasedOnStyle: LLVM\nIndentWidth: 4\n")
        self.write("src/platform/Clock.cpp", "int  Now( ) {return 1;}\n")
        self.assertEqual(self.broken("format"), ["src/platform/Clock.cpp: run clang-format -i"])

    def test_an_empty_tree_is_no_success(self):
        shutil.rmtree(os.path.join(self.root, "src"))
        for name in ("share", "ratio", "format"):
            self.assertTrue(self.broken(name), name)

    def test_no_text_is_handed_on_to_an_interpreter_or_the_network(self):
        for code, what in (
                ("std::system(x);", "std::system("), ("auto* p = popen(x, y);", "popen("), ("execvp(a, b);", "execvp("),
                ("QProcess::startDetached(a, b);", "QProcess"), ("QDesktopServices::openUrl(x);", "QDesktopServices"),
                ("QNetworkAccessManager m;", "QNetworkAccessManager"), ("label.setTextFormat(Qt::RichText);", "Qt::RichText"),
                ("page->setHtml(x);", "setHtml("), ("::socket(AF_INET, 1, 0);", "::socket(AF_"),
                ("getaddrinfo(a, b, c, d);", "getaddrinfo("), ("b->setOpenExternalLinks(true);", "setOpenExternalLinks(true")):
            self.write("src/platform/Clock.cpp", f"int Now() {{\n    {code}\n}}\n")
            told = self.broken("handing")
            self.assertTrue(told and f'src/platform/Clock.cpp:2: "{what}" ' in told[0], (code, told))
        self.write("src/platform/Clock.cpp", "#include <QNetworkReply>\n#include <sys/socket.h>\n")
        self.assertEqual(len(self.broken("handing")), 2)

    def test_words_that_only_look_like_handing_on_are_fine(self):
        self.write("src/platform/Clock.cpp",
                   "// system(x) and popen(y) in a comment\nconst char* a = \"system(x)\";\n"
                   "QLocale l = QLocale::system();\nconnect(a, b);\nfile.system(x);\n")
        self.assertEqual(self.broken("handing"), [])

    def test_a_format_is_a_literal(self):
        good = 'void f() {\n    std::printf("%s", x);\n    std::snprintf(a.data(), a.size(), "%d, %d", x, y);\n' \
               '    std::fprintf(stderr, "x");\n}\n'
        self.write("src/platform/Clock.cpp", good)
        self.assertEqual(self.broken("handing"), [])
        for call in ("std::printf(x)", "std::snprintf(a, f(1, 2), x)", "std::fprintf(stderr, text.c_str())"):
            self.write("src/platform/Clock.cpp", f"void f() {{\n    {call};\n}}\n")
            self.assertIn("takes a format that is no literal", self.broken("handing")[0])

    def test_a_library_for_the_network_is_told(self):
        self.write("src/platform/CMakeLists.txt", "target_sources(quavernet_logic PRIVATE Clock.cpp)\n"
                   "target_link_libraries(quavernet_logic PRIVATE Qt6::Network)\n")
        self.assertEqual(self.broken("handing"), ["src/platform/CMakeLists.txt: links a library for the network"])


class FunctionsTest(unittest.TestCase):
    def names(self, text):
        return [(f.name, f.first, f.last, f.owner) for f in source.functions(text)]

    def test_lambdas_and_inner_blocks_belong_to_the_function_around_them(self):
        text = "void A::B() {\n    if (x) {\n        f([&] {\n        });\n    }\n}\nint C() {\n}\n"
        self.assertEqual(self.names(text), [("A::B", 1, 6, "A"), ("C", 7, 8, "")])

    def test_braces_in_texts_and_comments_do_not_count(self):
        text = 'void A() {\n    f("{{", \'{\', R"x({)x"); // {\n}\nvoid B() {}\n'
        self.assertEqual(self.names(text), [("A", 1, 3, ""), ("B", 4, 4, "")])

    def test_a_constructor_begins_at_its_head_and_not_at_its_member_values(self):
        text = "A::A(int x)\n    : m_x{x},\n      m_y(2) {\n    f();\n}\n"
        self.assertEqual(self.names(text), [("A::A", 1, 5, "A")])

    def test_functions_in_a_class_belong_to_it(self):
        text = "namespace n {\nclass A : public B {\npublic:\n    int C() const { return 1; }\n};\nint D() { return 2; }\n}\n"
        self.assertEqual(self.names(text), [("C", 4, 4, "A"), ("D", 6, 6, "")])

    def test_digit_separators_are_no_characters(self):
        text = "int A() {\n    return 1'000'000;\n}\nint B() {\n    return '{';\n}\n"
        self.assertEqual([row[0] for row in self.names(text)], ["A", "B"])

    def test_public_declarations_are_types_functions_and_constants(self):
        text = ("// Opens.\n#pragma once\nnamespace a {\nclass Later;\n/// Told.\nclass A : public B {\npublic:\n    explicit A(int x);\n"
                "    ~A() override;\n    /// Told.\n    int C(int x) const { return x + 1; }\n\n    int D() const;\n"
                "    void E() override;\n    int field = 1;\n\nprivate:\n    int F();\n};\n\nenum class G { One, Two };\n"
                "inline constexpr int H = 1; ///< Told.\nnamespace {\nint I();\n}\n} // namespace a\n")
        self.assertEqual([(d.name, d.documented) for d in declarations.public_declarations(text)],
                         [("A", True), ("C(int)", True), ("D()", False), ("G", False), ("H", True)])

    def test_private_names_are_types_functions_with_their_types_and_values(self):
        text = ("namespace {\nconstexpr int A = 1;\nconst char* const B[] = {\"x\", \"y\"};\nstruct C {\n    int d = 1;\n};\n"
                "using E = int;\nint F(const char* text, int number = G());\nvoid F() {\n    int h = 1;\n}\n"
                "using std::string;\n} // namespace\nint I = 1;\nint A::J() {\n    return 1;\n}\n")
        self.assertEqual(source.private_names(text), {"A", "B", "C", "E", "F(const char*, int)", "F()"})


if __name__ == "__main__":
    unittest.main()
