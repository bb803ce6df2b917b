# growth.gnuplot DATA_FOLDER PLOT_FOLDER: one small plot of each file of data.
data = ARG1 . "/"
plots = ARG2 . "/"
set terminal svg size 480,320 font "sans,11" background rgb "white"
set logscale xy
set grid linecolor rgb "#dddddd"
set key top left
set style line 1 linecolor rgb "#1f5fa8" linewidth 2 pointtype 7 pointsize 0.6
set style line 2 linecolor rgb "#999999" linewidth 2 pointtype 7 pointsize 0.6
set ylabel "microseconds"
set format xy "%.0s%c"
set yrange [*:*]

set xlabel "control channels"
set output plots . "channels.svg"
unset logscale
set yrange [0:*]
set format xy "%g"
plot data . "channels.dat" with linespoints linestyle 1 title "STATUS, median"

set logscale xy
set yrange [*:*]
set format x "%.0s%c"
set format y "%g"
set xlabel "commands that wait as the queue starts"
set output plots . "queue.svg"
plot data . "queue.dat" with linespoints linestyle 1 title "push and work off"

set xlabel "lines of the configuration"
set output plots . "configuration.svg"
plot data . "configuration.dat" with linespoints linestyle 1 title "load", \
     data . "configuration-limit.dat" with linespoints linestyle 2 title "read the bytes"

set xlabel "KiB of the definition file"
set output plots . "definitions.svg"
plot data . "definitions.dat" with linespoints linestyle 1 title "load one model", \
     data . "definitions-limit.dat" with linespoints linestyle 2 title "read the bytes"

set xlabel "slots of the lens memory"
set output plots . "lensmemory.svg"
plot data . "lensmemory.dat" with linespoints linestyle 1 title "load, each slot logged", \
     data . "lensmemory-limit.dat" with linespoints linestyle 2 title "read the bytes"
