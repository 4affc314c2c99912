# The picture of docs/performance.md: reads curves.csv, writes performance.svg.
set terminal svg size 960,420 font "sans-serif,13" background "#ffffff"
set output "performance.svg"
set datafile separator ","
set multiplot layout 1,2
set logscale y
set yrange [0.01:200]
set format y "%g %%"
set grid ytics linecolor "#dddddd"
set key bottom right reverse Left
set border 3
set tics nomirror

names = "reference sse2 avx2 avx512"
colours = "#888888 #d08000 #2070c0 #20a060"
# Rows of one renderer for which `condition` holds.
rows(name, condition) = sprintf("< awk -F , '$1 == \"%s\" && %s' curves.csv", name, condition)

set title "32 notes"
set xlabel "modes of each note"
set ylabel "of one core at 48 kHz"
plot for [i = 1:4] rows(word(names, i), "$2 == 32") using 3:4 smooth unique \
    with linespoints linewidth 2 pointtype 7 pointsize 0.5 linecolor rgb word(colours, i) \
    title word(names, i)

set title "100 modes a note"
set xlabel "notes"
unset ylabel
plot for [i = 1:4] rows(word(names, i), "$3 == 100") using 2:4 smooth unique \
    with linespoints linewidth 2 pointtype 7 pointsize 0.5 linecolor rgb word(colours, i) \
    title word(names, i)
unset multiplot
