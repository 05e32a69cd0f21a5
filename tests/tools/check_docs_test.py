"""Tests of check_docs.py: what it must find, and what it must let pass."""

import contextlib
import io
import pathlib
import tempfile
import textwrap
import unittest

import check_docs


def get_faults(text):
    return [what for _, what in check_docs.check_text(textwrap.dedent(text))]


class Finds(unittest.TestCase):
    def test_class_without_comment(self):
        self.assertEqual(["class A"], get_faults("class A\n{\n};\n"))

    def test_exported_class_and_its_line(self):
        self.assertEqual([(2, "class VIEW")], check_docs.check_text("\nclass TOLV_BASE_EXPORT VIEW : public QWidget\n{\n};\n"))

    def test_class_template(self):
        self.assertEqual(["class A"], get_faults("template <typename T>\nclass A\n{\n};\n"))

    def test_struct_enum_and_free_function(self):
        self.assertEqual(["struct S", "enum E", "f()"], get_faults("struct S\n{\n    int x;\n};\n\nenum E\n{\n    A\n};\n\nint f(int x);\n"))

    def test_function_that_takes_and_returns_functions(self):
        self.assertEqual(["set()"], get_faults("EXPORT std::function<void(bool)> set(std::function<void(bool)> handler);\n"))

    def test_function_with_attribute(self):
        self.assertEqual(["f()"], get_faults('void f(const char* a, ...) __attribute__((format(printf, 1, 2)));\n'))

    def test_public_and_protected_members_and_signals(self):
        self.assertEqual(
            ["A::f()", "A::g()", "A::h()", "A::s()"],
            get_faults(
                """
                /// A class.
                class A
                {
                public:
                    void f();

                    int g() const;

                protected:
                    virtual void h() = 0;

                signals:
                    void s();

                private:
                    void p();
                };
                """
            ),
        )

    def test_inline_members(self):
        self.assertEqual(["A::f()"], get_faults("/// A.\nclass A\n{\npublic:\n    A() : m_x{1}\n    {\n    }\n    int f() const\n    {\n        return g(m_x);\n    }\n};\n"))

    def test_nested_types(self):
        self.assertEqual(
            ["A::struct B", "B::f()"],
            get_faults("/// A.\nclass A\n{\npublic:\n    struct B\n    {\n        void f();\n    };\n};\n"),
        )

    def test_operators(self):
        self.assertEqual(["operator<()", "operator==()"], get_faults("bool operator<(A a, A b);\n\nbool operator==(A a, A b);\n"))

    def test_comment_apart_from_the_declaration(self):
        self.assertEqual(["f()"], get_faults("/// About the file.\n\nvoid f();\n"))

    def test_ordinary_comment(self):
        self.assertEqual(["f()"], get_faults("// Not for readers of the header.\nvoid f();\n"))

    def test_declaration_behind_a_blank_line(self):
        self.assertEqual(["g()"], get_faults("/// First.\nvoid f();\n\nvoid g();\n"))

    def test_declaration_below_one_that_needs_no_comment_and_has_none(self):
        self.assertEqual(["A::get()"], get_faults("/// A.\nclass A\n{\npublic:\n    A();\n    int get() const;\n};\n"))

    def test_group_does_not_reach_over_an_access_label(self):
        self.assertEqual(["A::g()"], get_faults("/// A.\nclass A\n{\npublic:\n    /// F.\n    void f();\nprotected:\n    void g();\n};\n"))

    def test_what_stands_in_a_namespace(self):
        self.assertEqual(["class B"], get_faults("namespace N\n{\nclass B\n{\n};\n} // namespace N\n"))

    def test_declaration_behind_a_class_body_is_not_covered_by_its_members(self):
        self.assertEqual(["f()"], get_faults("/// A.\nclass A\n{\npublic:\n    /// G.\n    void g();\n};\nvoid f();\n"))


class Passes(unittest.TestCase):
    def test_comment_above(self):
        self.assertEqual([], get_faults("/// A.\nclass A\n{\npublic:\n    /// F.\n    void f();\n};\n\n/// G.\nvoid g();\n"))

    def test_comment_above_a_template(self):
        self.assertEqual([], get_faults("/// A.\ntemplate <typename T>\nT f();\n"))

    def test_trailing_comment(self):
        self.assertEqual([], get_faults("void f(); ///< does it\nvoid g(int x,\n       int y); ///< does that\n"))

    def test_group(self):
        self.assertEqual([], get_faults("/// The path.\nstd::string a();\nstd::string b(int x,\n              int y);\nstd::string c();\n"))

    def test_group_with_inline_bodies(self):
        self.assertEqual([], get_faults("/// Equality.\ninline bool operator==(A a, A b)\n{\n    return true;\n}\ninline bool operator!=(A a, A b)\n{\n    return false;\n}\n"))

    def test_what_needs_no_comment(self):
        self.assertEqual(
            [],
            get_faults(
                """
                class FORWARD;

                /// A.
                class A : public B
                {
                    Q_OBJECT
                    Q_PROPERTY(int x READ x)
                public:
                    explicit A(int x);
                    ~A() override;
                    A(const A&) = delete;
                    A& operator=(const A&) = delete;

                    void paint(QPainter* painter) override;

                    void forbidden() = delete;

                    friend bool operator==(const A&, const A&);

                    static bool m_no_box;

                private:
                    struct IMPL
                    {
                        void f();
                    };
                    void g();
                    std::unique_ptr<IMPL> m_impl;
                };
                """
            ),
        )

    def test_macros_constants_and_aliases(self):
        self.assertEqual(
            [],
            get_faults(
                "#define MAKE(X) \\\n    void f_##X()\nMAKE(a);\nusing F = void (*)(int);\nconstexpr int N = f(3);\n"
                "static_assert(sizeof(int) == 4, \"text with ( and {\");\nextern const char* const NAME;\n"
            ),
        )

    def test_braces_and_comment_marks_in_texts(self):
        self.assertEqual([], get_faults('/// F.\ninline const char* f()\n{\n    return "} // {";\n}\n\n/// G.\nvoid g();\n'))


class Command(unittest.TestCase):
    def run_on(self, text):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "a.h").write_text(text, encoding="utf-8")
            (pathlib.Path(folder) / "b_p.h").write_text("void internal();\n", encoding="utf-8")
            output = io.StringIO()
            with contextlib.redirect_stdout(output):
                status = check_docs.main([folder])
            return status, output.getvalue()

    def test_status_and_place_of_a_fault(self):
        status, output = self.run_on("\n\nvoid f();\n")
        self.assertEqual(1, status)
        self.assertIn("a.h:3: f() has no comment", output)

    def test_status_without_faults_and_headers_that_are_not_public(self):
        status, output = self.run_on("/// F.\nvoid f();\n")
        self.assertEqual(0, status)
        self.assertIn("1 headers, 0 without a comment", output)

    def test_a_folder_without_headers_is_an_error(self):
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stderr(io.StringIO()):
            self.assertEqual(2, check_docs.main([folder]))


if __name__ == "__main__":
    unittest.main()
