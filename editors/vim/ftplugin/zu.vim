setlocal commentstring=;;\ %s
setlocal comments=:;;
setlocal shiftwidth=2 expandtab
compiler tarn
