# Makes good/gnuplot-plot.emf: gnuplot plot.gp
set term emf enhanced color size 400,265 font "Arial,11"
set output "good/gnuplot-plot.emf"
set samples 30
set title "Measured {/Symbol a}_1 and x^2"
set xlabel "time / s"
set ylabel "U / V"
set xtics 5
plot sin(x) lw 2, cos(x)*0.5 with linespoints, 0.3*sin(3*x) with boxes fs solid 0.4
