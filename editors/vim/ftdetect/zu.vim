autocmd BufRead,BufNewFile *.zu set filetype=zu
