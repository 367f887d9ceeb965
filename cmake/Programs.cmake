# The programs, the resource files and the benchmarks.
