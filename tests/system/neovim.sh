#!/bin/sh
# Neovim with the files of editors/vim and tarn --lsp: an error is shown, completed, renamed, laid out.
# usage: neovim.sh SOURCE TARN WORK
set -e
command -v nvim >/dev/null || exit 77
source=$1 work=$3/neovim
rm -rf "$work" && mkdir -p "$work/site" && cp -R "$source/editors/vim" "$work/site/zu"
PATH=$(dirname "$2"):$PATH
export PATH HOME="$work" XDG_CONFIG_HOME="$work" XDG_DATA_HOME="$work" XDG_STATE_HOME="$work" XDG_CACHE_HOME="$work"
printf 'module lamp:\nInput: button;\nOutput: light;\nloop{wait button>>emit lihgt}\nend\n' > "$work/lamp.zu"
cat > "$work/steps.lua" <<'LUA'
local function until_true(what, f)
  if not vim.wait(20000, f, 20) then error(what .. " did not come") end
end
local function ask(method, more)
  local params = vim.tbl_extend("force", vim.lsp.util.make_position_params(), more or {})
  for _, answer in pairs(vim.lsp.buf_request_sync(0, "textDocument/" .. method, params, 20000)) do
    return answer.result
  end
end
local function steps()
  until_true("the error", function() return #vim.diagnostic.get(0) > 0 end)
  local error = vim.diagnostic.get(0)[1]
  assert(error.message == '"lihgt" is not declared; did you mean "light"?' and error.lnum == 3, error.message)
  vim.api.nvim_win_set_cursor(0, { 4, 23 })
  assert(ask("completion")[1].label == "light")
  vim.api.nvim_buf_set_text(0, 3, 23, 3, 28, { "light" })
  until_true("the end of the error", function() return #vim.diagnostic.get(0) == 0 end)
  vim.lsp.buf.rename("lit")
  until_true("the new name", function() return vim.api.nvim_buf_get_lines(0, 2, 3, true)[1] == "Output: lit;" end)
  local format = vim.lsp.buf.format or vim.lsp.buf.formatting_sync
  format()
  until_true("the layout", function() return vim.api.nvim_buf_get_lines(0, 3, 4, true)[1] == "loop { wait button >> emit lit }" end)
end
local good, fault = pcall(steps)
io.stderr:write(good and "done\n" or tostring(fault) .. "\n")
vim.cmd(good and "qa!" or "cq!")
LUA
cd "$work"
timeout 120 nvim --headless -n -u NONE --cmd "set rtp^=$work/site/zu" --cmd 'filetype plugin on' --cmd 'syntax on' lamp.zu \
  -c 'luafile steps.lua'
