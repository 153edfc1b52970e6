autocmd BufRead,BufNewFile *.zu setfiletype zu
