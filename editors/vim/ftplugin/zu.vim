setlocal commentstring=;;\ %s
setlocal comments=:;;
setlocal shiftwidth=2 expandtab
setlocal textwidth=100
compiler tarn
" Neovim speaks to the language server, where tarn is in the path.
if has('nvim') && executable('tarn')
  lua local id = vim.g.zu_client or vim.lsp.start_client({ name = "tarn", cmd = { "tarn", "--lsp" }, root_dir = vim.fn.getcwd() })
  \ vim.g.zu_client = id
  \ vim.lsp.buf_attach_client(0, id)
  setlocal omnifunc=v:lua.vim.lsp.omnifunc
endif
