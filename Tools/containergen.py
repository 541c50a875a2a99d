#!/usr/bin/env python3
"""Turns the description of a container class into its declarations.

OSGX.xml is the text that the type X carries at run time, byte for byte. From it come

  OSGXBase.h        class XBase: fields, ids, masks, accessors and the table with a row per field
  OSGXStatics.inl   pointer type, field types, type object and the instantiated pattern
  OSGX.h            class X, if there is no OSGX.h beside the description: a container without
                    behaviour of its own

Behaviour is not generated. It is written once, in OSGContainerPattern.inl.

Attributes of the element FieldContainer that count here: name, parent, structure ("concrete" or
"abstract"), group (the group name of the type; the class's own name for a child of Attachment,
"NULL" otherwise), header (where X is defined, if not in OSGX.h) and firstFieldId (where the ids do
not continue the parent's). Those of Field:
name, type, cardinality, visibility, access ("public"; "owner": read by everybody, written by the
class's own functions; "protected": both are the class's own), defaultValue, and category: "pointer"
(counted unrecorded), "recorded", "weak", "unreferenced" or "child" for fields whose type ends in
Ptr. A pointer field whose class derives from this one has include="later": OSGX.h then includes the
header of that class behind its own.
"""

import argparse
import pathlib
import sys
import textwrap
import xml.etree.ElementTree as ElementTree

VALUE_TYPES = {
    "std::string", "bool", "UInt8", "UInt16", "UInt32", "UInt64", "Int32", "Real32",
    "Pnt3f", "Vec2f", "Vec3f", "Color3f", "Color4f", "Matrix", "BoxVolume",
}
NUMBERS = {"UInt8", "UInt16", "UInt32", "UInt64", "Int32", "Real32", "bool"}
POLICIES = {"pointer": "UnrecordedRefCountPolicy", "recorded": "RecordedRefCountPolicy",
            "weak": "WeakRefCountPolicy", "unreferenced": "NoRefCountPolicy"}


class DescriptionError(Exception):
    pass


def literal(text):
    """`text` as a C++ string literal."""
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
    return f'"{escaped}"'


class Field:
    def __init__(self, element):
        self.name = element.get("name")
        if not self.name:
            raise DescriptionError("a field without a name")
        self.capital = self.name[0].upper() + self.name[1:]
        self.type = element.get("type")
        self.multi = element.get("cardinality", "single") == "multi"
        self.internal = element.get("visibility", "external") == "internal"
        self.access = element.get("access", "public")
        self.default = element.get("defaultValue")
        self.category = element.get("category", "pointer")
        self.prose = (element.text or "").lstrip("\n")
        self.pointer = self.type.endswith("Ptr")
        self.forward = element.get("include") == "later"
        if self.access not in ("public", "owner", "protected"):
            raise DescriptionError(f"field {self.name}: unknown access {self.access}")
        if not self.pointer and self.type not in VALUE_TYPES:
            raise DescriptionError(f"field {self.name}: unknown type {self.type}")

    @property
    def access_name(self):
        return "Public" if self.access == "public" else "Protected"

    @property
    def target(self):
        return self.type[:-3]

    @property
    def member(self):
        return ("_mf" if self.multi else "_sf") + self.capital

    @property
    def field_type(self):
        if not self.pointer:
            return f"{'MField' if self.multi else 'SField'}<{self.type}>"
        if self.category == "child":
            return f"ChildPointerMField<{self.target} *, UnrecordedRefCountPolicy, 1>"
        kind = "PointerMField" if self.multi else "PointerSField"
        return f"{kind}<{self.target} *, {POLICIES[self.category]}, 0>"

    @property
    def initialiser(self):
        """Argument of the member's constructor in the default constructor."""
        if self.pointer or self.multi or self.default in (None, ""):
            return ""
        if self.type == "std::string":
            return literal(self.default)
        return f"{self.type}({self.default})"

    def accessors(self):
        c, m, t = self.capital, self.member, self.type
        mask = f"{c}FieldMask"
        kind = "MF" if self.multi else "SF"
        read = [f"{self.field_type} const *get{kind}{c}() const {{ return &{m}; }}"]
        write = [f"{self.field_type} *edit{kind}{c}()\n{{\n    this->markEdited({mask});\n    return &{m};\n}}"]
        if self.pointer and self.multi:
            read += [f"{self.target} *get{c}(UInt32 index) const {{ return {m}[index]; }}"]
        elif self.pointer:
            read += [f"{self.target} *get{c}() const {{ return {m}.getValue(); }}"]
            write += [f"void set{c}({self.target} *value)\n{{\n    this->markEdited({mask});\n"
                      f"    {m}.setValue(value);\n}}"]
        elif self.multi:
            read += [f"MField<{t}> const &get{c}() const {{ return {m}; }}"]
            write += [f"MField<{t}> &edit{c}()\n{{\n    this->markEdited({mask});\n    return {m};\n}}"]
            if t != "bool":
                read += [f"{t} const &get{c}(UInt32 index) const {{ return {m}[index]; }}"]
                write += [f"{t} &edit{c}(UInt32 index)\n{{\n    this->markEdited({mask});\n    return {m}[index];\n}}"]
        else:
            argument = t if t in NUMBERS else f"{t} const &"
            result = f"{t}" if t in NUMBERS else f"{t} const &"
            space = " " if t in NUMBERS else ""
            read += [f"{result}{space}get{c}() const {{ return {m}.getValue(); }}"]
            write += [f"{t} &edit{c}()\n{{\n    this->markEdited({mask});\n    return {m}.getValue();\n}}",
                      f"void set{c}({argument}{space}value)\n{{\n    this->markEdited({mask});\n"
                      f"    {m}.setValue(value);\n}}"]
        return read, write


class Container:
    def __init__(self, path, text):
        root = ElementTree.fromstring(text.encode())
        if root.tag != "FieldContainer":
            raise DescriptionError(f"the root element is {root.tag}")
        self.path = path
        self.text = text
        self.name = root.get("name")
        if path.stem != f"OSG{self.name}":
            raise DescriptionError(f"the class is {self.name}, the file {path.name}")
        self.parent = root.get("parent")
        self.abstract = root.get("structure", "concrete") == "abstract"
        own_group = self.name if self.parent == "Attachment" else "NULL"
        self.group = root.get("group", own_group)
        self.first_id = root.get("firstFieldId")
        self.own_header = root.get("header", f"OSG{self.name}.h")
        self.is_description_alone = (root.get("header") is None
                                     and not path.with_suffix(".h").exists())
        self.prose = (root.text or "").lstrip("\n")
        self.fields = [Field(element) for element in root.iter("Field")]

    # --- OSGXBase.h ---

    def header(self, api, api_header):
        name, parent = self.name, self.parent
        pointers = [f for f in self.fields if f.pointer and f.target != name]
        targets = sorted({f.target for f in pointers if not f.forward} | {parent})
        forward = "".join(f"class {f.target};\n" for f in pointers if f.forward)
        includes = "\n".join(f'#include "OSG{target}.h"' for target in targets)
        base = f"{name}Base"
        pattern = f"ContainerPattern<{name}, {base}, {parent}>"
        public, protected = [], []
        for field in self.fields:
            read, write = field.accessors()
            (protected if field.access == "protected" else public).extend(read)
            (public if field.access == "public" else protected).extend(write)
            protected += [f"GetFieldHandlePtr getHandle{field.capital}() const;",
                          f"EditFieldHandlePtr editHandle{field.capital}();"]
        # A field may begin in the padding at the end of the field before it.
        members = "\n".join(f"[[no_unique_address]] {f.field_type} {f.member};"
                            for f in self.fields)
        return f"""// Made by containergen.py from {self.path.name}.
#pragma once

{includes}
#include "{api_header}"
#include "OSGContainerPattern.h"

namespace OSG
{{
class {name};
class {base};
{forward}
// Instantiated once, in the statics of the class.
extern template class {api} {pattern};

template <>
struct {api} FieldTraits<{name} *, 0>
{{
    static DataType const &getType();
}};

template <>
struct {api} PointerFieldTypesOf<{name}>
{{
    static FieldType const &getFieldType(int policy, FieldCardinality cardinality);
}};

/// Fields of {name}.
class {api} {base} : public {pattern}
{{
  public:
    using Inherited = {parent};
    using Pattern = {pattern};

    static constexpr bool IsAbstract = {str(self.abstract).lower()};
{indent(self.ids(), 4)}

    static FieldContainerType &getClassType() {{ return _type; }}
    static UInt32 getClassTypeId() {{ return _type.getId(); }}
    static UInt32 getClassGroupId() {{ return _type.getGroupId(); }}
    static FieldContainerType _type;

{indent(chr(10).join(public), 4)}

    /// The fields, in id order.
    static constexpr auto fieldRows()
    {{
        return std::make_tuple({self.rows(base)});
    }}

  protected:
    {base}();
    {base}({base} const &source);
    ~{base}() override;

    static char const *getClassname() {{ return "{name}"; }}
{indent(chr(10).join(protected), 4)}
{indent(members, 4)}

    template <class X, class XBase, class Parent>
    friend class ContainerPattern;
}};
}} // namespace OSG
"""

    def ids(self):
        lines = []
        next_id = self.first_id or f"{self.parent}::NextFieldId"
        for field in self.fields:
            lines.append(f"static constexpr UInt32 {field.capital}FieldId = {next_id};")
            next_id = f"{field.capital}FieldId + 1"
        lines.append(f"static constexpr UInt32 NextFieldId = {next_id};")
        for field in self.fields:
            lines.append(f"static constexpr BitVector {field.capital}FieldMask = "
                         f"BitVector(1) << {field.capital}FieldId;")
        lines.append("static constexpr BitVector NextFieldMask = BitVector(1) << NextFieldId;")
        return "\n".join(lines)

    def rows(self, base):
        rows = []
        for field in self.fields:
            visibility = "Internal" if field.internal else "External"
            rows.append(f"make_row(&{base}::{field.member}, {literal(field.name)}, "
                        f"{field.capital}FieldId, FieldDescriptionBase::Visibility::{visibility}, "
                        f"FieldAccess::{field.access_name}, {literal(field.prose)})")
        return ",\n            ".join(rows)

    # --- OSGX.h ---

    def class_header(self, api):
        comment = textwrap.fill(" ".join(self.prose.split()), 96, initial_indent="/// ",
                                subsequent_indent="/// ")
        return f"""// Made by containergen.py from {self.path.name}.
#pragma once

#include "OSG{self.name}Base.h"

namespace OSG
{{
{comment}
class {api} {self.name} : public {self.name}Base
{{
  protected:
    {self.name}() = default;
    {self.name}({self.name} const &) = default;
    ~{self.name}() override;

    friend Pattern;
}};
}} // namespace OSG
"""

    # --- OSGXStatics.inl ---

    def statics(self):
        name, base = self.name, f"{self.name}Base"
        pattern = f"ContainerPattern<{name}, {base}, {self.parent}>"
        pointer = f"{name}Ptr"
        names = [pointer] + [f"{cardinality}{policy}{pointer}" for cardinality in ("SF", "MF")
                             for policy in ("Rec", "Unrec", "Weak", "Unrefd")]
        handles = "".join(f"""
GetFieldHandlePtr {base}::getHandle{f.capital}() const
{{
    return makeGetHandle({f.member}, {f.capital}FieldId);
}}
EditFieldHandlePtr {base}::editHandle{f.capital}()
{{
    return makeEditHandle({f.member}, {f.capital}FieldId);
}}
""" for f in self.fields)
        defaults = "".join(f"\n    , {f.member}({f.initialiser})" for f in self.fields)
        copies = "".join(f"\n    , {f.member}({'' if f.pointer else f'source.{f.member}'})"
                         for f in self.fields)
        create = "nullptr" if self.abstract else f"&{base}::createForType"
        own_end = f"{name}::~{name}() = default;\n" if self.is_description_alone else ""
        return f"""// Made by containergen.py from {self.path.name}.
#include "OSGContainerPattern.inl"
#include "{self.own_header}"

namespace OSG
{{
namespace
{{
// Constructed in this order: the pointer type, its field types, then the type itself.
constexpr char const *pointer_names_{name}[9] = {{{", ".join(literal(n) for n in names)}}};
PointerTypeFamily const pointer_types_{name}(pointer_names_{name}, "{self.parent}Ptr",
                                             {base}::_type);
}} // namespace

FieldContainerType {base}::_type(
    "{name}", "{self.parent}", "{self.group}", 0, {create}, &{base}::initType,
    &{base}::exitType, &{base}::classDescInserter, false, 0,
    {raw(self.text)},
    {literal(self.prose)});

DataType const &FieldTraits<{name} *, 0>::getType() {{ return pointer_types_{name}.getPointerType(); }}

FieldType const &PointerFieldTypesOf<{name}>::getFieldType(int policy, FieldCardinality cardinality)
{{
    return pointer_types_{name}.getFieldType(policy, cardinality);
}}

{base}::{base}()
    : Pattern(){defaults}
{{}}
{base}::{base}({base} const &source)
    : Pattern(source){copies}
{{}}
{base}::~{base}() = default;
{own_end}{handles}
template class {pattern};
}} // namespace OSG
"""


def raw(text):
    """The text as raw string literals that are short enough for all compilers."""
    pieces = [text[i:i + 8000] for i in range(0, len(text), 8000)]
    return "\n    ".join(f'R"xml({piece})xml"' for piece in pieces)


def indent(text, blanks):
    return textwrap.indent(text, " " * blanks)


def write_if_changed(path, text):
    if not path.exists() or path.read_text() != text:
        path.write_text(text)
    else:
        path.touch()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--api", required=True, help="export macro of the unit")
    parser.add_argument("--api-header", required=True)
    parser.add_argument("--out", required=True, type=pathlib.Path)
    parser.add_argument("descriptions", nargs="+", type=pathlib.Path)
    arguments = parser.parse_args()
    arguments.out.mkdir(parents=True, exist_ok=True)
    for path in arguments.descriptions:
        try:
            container = Container(path, path.read_text(encoding="utf-8"))
        except (DescriptionError, ElementTree.ParseError) as error:
            print(f"{path}: {error}", file=sys.stderr)
            return 1
        stem = arguments.out / path.stem
        write_if_changed(stem.with_name(path.stem + "Base.h"),
                         container.header(arguments.api, arguments.api_header))
        write_if_changed(stem.with_name(path.stem + "Statics.inl"), container.statics())
        if container.is_description_alone:
            write_if_changed(stem.with_suffix(".h"), container.class_header(arguments.api))
        else:
            stem.with_suffix(".h").unlink(missing_ok=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
