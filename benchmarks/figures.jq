# SPDX-License-Identifier: MIT
# A line "name <tab> measure <tab> value" for each figure of a benchmark's JSON output; times in nanoseconds. Of repeated
# benchmarks the median counts.
def nanoseconds: {ns: 1, us: 1e3, ms: 1e6, s: 1e9};
.benchmarks[]
| select(.error_occurred | not)
| select(.aggregate_name == "median" or .run_type == "iteration")
| (.run_name | gsub("/(iterations|repeats|min_time|min_warmup_time):[^/]*|/(real|process|manual)_time"; "")) as $name
| ([$name, "time", .real_time * nanoseconds[.time_unit]],
   (to_entries[]
    | select((.value | type) == "number")
    | select(.key | test("^(real_time|cpu_time|iterations|threads|repetition.*|.*_index)$") | not)
    | [$name, .key, .value]))
| @tsv
