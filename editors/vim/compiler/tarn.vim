" :make compiles the file, and goes to what is wrong.
let current_compiler = "tarn"
CompilerSet makeprg=tarn\ -q\ -d\ /tmp\ %:S
CompilerSet errorformat=%f:%l:%c:\ %trror:\ %m,%f:%l:%c:\ %tarning:\ %m,%f:%l:\ %trror:\ %m
