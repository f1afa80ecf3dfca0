# The blocks $ratios, $per_record and $per_length, and the number of families in the second, come from plot.py.
set terminal svg size 960,760 font "sans-serif,13" background "white"
set multiplot
set border 3
set tics nomirror
blue = "#1f5fa8"
orange = "#d9822b"
set linetype 1 lc rgb blue
set linetype 2 lc rgb orange
set linetype 3 lc rgb "#2f8f5b"
set linetype 4 lc rgb "#8a4fa3"
set linetype 5 lc rgb "#b23a48"

set origin 0,0.56
set size 1,0.44
set title "Time, as a multiple of the floor's (cross: what is aimed at)"
set lmargin 36
set yrange [6.6:-0.6]
set xrange [0:*]
set ytics ()
do for [i = 1:|$ratios|] { set ytics add (word($ratios[i], 1) i - 1) }
set grid xtics lt 1 lc rgb "#dddddd"
set key off
set arrow from 1,graph 0 to 1,graph 1 nohead lc rgb "#888888"
bar = 0.3
plot $ratios using 2:0:(0):2:($0 - bar):($0 + bar) with boxxyerror fs solid lc rgb blue, \
     $ratios using 3:0 with points pt 2 lw 2 lc rgb orange
unset arrow
unset grid
set grid ytics lt 1 lc rgb "#dddddd"
set ytics autofreq
set autoscale
set lmargin 9
set key top right samplen 2

set origin 0,0
set size 0.5,0.55
set title "Time per record"
set xlabel "records in the message"
set ylabel "ns per record"
set logscale x 2
set xrange [0.9:300]
set yrange [0:*]
set offsets 0,0,100,0
plot for [i = 0:families - 1] $per_record index i using 1:2 with linespoints pt 7 ps 0.5 title columnheader(1)

unset offsets
set origin 0.5,0
set key top left
set title "Parse one record"
set xlabel "bytes of payload"
set ylabel "ns"
set xrange [12:2**25]
set logscale y 10
set yrange [10:*]
set format x "2^{%L}"
set format y "10^{%L}"
plot $per_length index 0 using 1:2 with linespoints pt 7 ps 0.5 title columnheader(1), \
     $per_length index 1 using 1:2 with linespoints pt 6 ps 0.5 lt 2 title columnheader(1)
unset multiplot
