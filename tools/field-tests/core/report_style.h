// How the report looks, on a screen and on paper.
#pragma once

namespace field_tests {

inline constexpr const char* kStyle = R"css(
html { color-scheme: light; }
body { font: 15px/1.5 "Segoe UI", Arial, sans-serif; color: #1d2733; background: #fff;
  max-width: 62em; margin: 2.5em auto; padding: 0 1.5em; }
h1 { font-size: 1.7em; margin: 0; }
h2 { font-size: 1.2em; margin: 2em 0 .5em; border-bottom: 1px solid #d5dbe2; padding-bottom: .2em; }
h3 { font-size: 1em; margin: 1.2em 0 .3em; color: #a3201a; }
.about { color: #55616e; margin: .2em 0 1em; }
.wine { background: #fff4d6; border-left: 4px solid #d79b00; padding: .6em 1em; }
.counts { display: flex; gap: 1em; }
.counts div { flex: 1; padding: .8em 1em; border-radius: 6px; background: #f1f4f7; color: #55616e; }
.counts b { display: block; font-size: 1.9em; line-height: 1.2; }
.counts .good { background: #e4f4e8; color: #17632c; }
.counts .bad { background: #fbe3e1; color: #a3201a; }
.counts .open { background: #fff4d6; color: #7a5800; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3em .8em .3em 0;
  border-bottom: 1px solid #e6eaee; }
th { color: #55616e; font-weight: 600; }
.purpose { color: #55616e; padding-left: 1em; }
.computer th { width: 15em; }
.programs td + td, .programs th + th { text-align: right; }
pre { background: #f6f8fa; border: 1px solid #e1e6eb; border-radius: 4px; padding: .7em;
  white-space: pre-wrap; overflow-wrap: anywhere; font: 13px/1.4 Consolas, monospace; }
details { color: #55616e; }
details ul { margin: .3em 0; columns: 2; font-size: .9em; overflow-wrap: anywhere; }
)css";

}  // namespace field_tests
