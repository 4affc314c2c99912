# The picture of docs/performance.md that has a bar for each program: reads programs.csv, writes
# programs.svg.
set terminal svg size 960,460 font "sans-serif,13" background "#ffffff"
set output "programs.svg"
set datafile separator ","
set logscale y
set yrange [1:3000]
set ylabel "most expensive block of 64 samples, in µs"
set xlabel "program"
set xrange [-1:42]
set xtics 0,3,41 nomirror
set ytics nomirror
set grid ytics linecolor "#dddddd"
set border 3
set boxwidth 0.7
set style fill solid 1.0 noborder
set key top right
# A block of 64 samples lasts 1333 µs at 48 kHz: one that takes longer comes too late.
plot "< awk -F , 'NR > 1 && $3 == 32' programs.csv" using 1:($6 * 1e6) with boxes \
         linecolor rgb "#2070c0" title "32 notes held for 10 s", \
     1333 with lines linewidth 2 linecolor rgb "#c03030" title "the time that there is"
