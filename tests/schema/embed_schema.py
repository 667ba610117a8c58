#!/usr/bin/env python3
"""Writes the host's database as a C++ source, with one list of statements per product.

    embed_schema.py OUTPUT
"""

import pathlib
import sys

sys.dont_write_bytecode = True
from make_schema import PRODUCTS, statements  # noqa: E402


def main() -> None:
    lists = ""
    for product in sorted(PRODUCTS):
        texts = "".join(f'R"sql({text})sql",\n' for text in statements(product))
        lists += f'{{"{product}", {{\n{texts}}}}},\n'
    pathlib.Path(sys.argv[1]).write_text(
        '#include "schema/host_schema.h"\n\n'
        "namespace schema {\n\n"
        "const std::map<std::string, std::vector<std::string>>& HostSchemas() {\n"
        "static const std::map<std::string, std::vector<std::string>> schemas = {\n"
        f"{lists}}};\nreturn schemas;\n}}\n\n}}  // namespace schema\n",
        encoding="utf-8")


if __name__ == "__main__":
    main()
