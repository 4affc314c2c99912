# No more: the other benchmarks load zelvatone.so.
