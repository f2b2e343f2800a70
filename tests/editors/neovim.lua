-- Uses "vexorcfg lsp" in Neovim as somebody does who types: drives another Neovim by its keys and
-- looks at its buffer, its diagnostics and its menus. That one has the settings of docs/editors.md.
--
--   PATH=... SOURCES=... WORK=... nvim --headless -u NONE -i NONE -c "luafile neovim.lua"

local sources, work = vim.env.SOURCES, vim.env.WORK .. "/größe ü"
local editor  -- the channel of the other Neovim

local function fail(...)
  local lines = { ... }
  for i = 1, #lines do
    lines[i] = type(lines[i]) == "string" and lines[i] or vim.inspect(lines[i])
  end
  error(table.concat(lines, "\n"), 0)
end

local function expect(what, expected, got)
  if not vim.deep_equal(expected, got) then fail(what, "expected:", expected, "got:", got) end
end

local function expect_match(what, pattern, got)
  if not got:find(pattern) then fail(what, "expected a match of:", pattern, "got:", got) end
end

local function read(path)
  local file = assert(io.open(path, "rb"))
  local text = file:read("*a")
  file:close()
  return text
end

local function write(path, text)
  local file = assert(io.open(path, "wb"))
  file:write(text)
  file:close()
end

-- Runs Lua code in the editor.
local function run(code, ...)
  return vim.rpcrequest(editor, "nvim_exec_lua", code, { ... })
end

-- Types. A "<" of the text is to be written as "<lt>".
local function type_keys(keys)
  vim.rpcrequest(editor, "nvim_input", keys)
end

-- Waits until the function returns something that is accepted, and returns that.
local function wait_for(what, get, is_good)
  local got
  local function look()
    got = get()
    return is_good(got)
  end
  if not vim.wait(20000, look, 10) then fail("waited in vain for " .. what, "got:", got) end
  return got
end

-- Waits until the cursor's line is that, but for the blanks around it.
local function expect_line(expected)
  local function line() return run("return vim.trim(vim.fn.getline('.'))") end
  wait_for("the line " .. expected, line, function(got) return got == expected end)
end

local function buffer_text()
  return run('return table.concat(vim.api.nvim_buf_get_lines(0, 0, -1, true), "\\n") .. "\\n"')
end

-- Waits until the buffer's findings are those, as "LINE CODE".
local function expect_findings(expected)
  local function get()
    return run([[
      local found = {}
      for _, each in ipairs(vim.diagnostic.get(0)) do
        table.insert(found, (each.lnum + 1) .. " " .. (each.code or each.user_data.lsp.code))
      end
      table.sort(found)
      return found
    ]])
  end
  wait_for("the findings " .. vim.inspect(expected), get, function(got)
    return vim.deep_equal(got, expected)
  end)
end

-- Returns the server's answer to a request about the buffer, behind all that it sent before.
local function ask(method)
  return run([[
    local params = { textDocument = vim.lsp.util.make_text_document_params() }
    for _, answer in pairs(vim.lsp.buf_request_sync(0, ..., params, 20000) or {}) do
      return answer.result
    end
  ]], method)
end

-- Puts the cursor on the first character of the text.
local function go_to(text)
  expect("cursor on " .. text, true, run("return vim.fn.search(..., 'cw') > 0", "\\V\\C" .. text))
end

-- Completes behind the cursor in insert mode, and takes the item of that name from the menu.
local function complete(label)
  type_keys("<C-x><C-o>")
  local function labels()
    local items = run("return vim.fn.complete_info({ 'items' }).items")
    return vim.tbl_map(function(item) return (item.abbr:gsub("^<(.*)>$", "%1")) end, items)
  end
  local got = wait_for("a menu with " .. label, labels, function(items)
    return vim.tbl_contains(items, label)
  end)
  for i, each in ipairs(got) do
    if each == label then return type_keys(string.rep("<C-n>", i) .. "<C-y><Esc>") end
  end
end

-- Opens the actions of the cursor's line and chooses the one whose title begins so.
local function act(title)
  run([[
    local wanted = ...
    offered, chosen = {}, false
    vim.ui.select = function(items, options, choose)
      for _, item in ipairs(items) do
        local title = options.format_item(item)
        table.insert(offered, title)
        if not chosen and vim.startswith(title, wanted) then
          chosen = true
          choose(item)
        end
      end
    end
  ]], title)
  local before = buffer_text()
  type_keys("gra")
  wait_for("the action " .. title, function() return run("return { chosen, offered }") end,
    function(got) return got[1] end)
  wait_for("the change of " .. title, buffer_text, function(text) return text ~= before end)
end

local function start_editor()
  vim.fn.mkdir(work, "p")
  editor = vim.fn.jobstart({ "nvim", "--embed", "--headless", "-u", "NONE", "-i", "NONE", "-n" }, {
    rpc = true,
    env = { XDG_CACHE_HOME = work, XDG_STATE_HOME = work },
  })
  run("vim.cmd('filetype on | set hidden noswapfile expandtab completeopt=menuone,noselect')")
end

-- Returns the code block below a heading of docs/editors.md.
local function snippet(heading)
  local document = read(sources .. "/docs/editors.md")
  local at = assert(document:find("\n## " .. heading, 1, true), heading)
  return assert(document:match("\n```lua\n(.-)\n```\n", at), heading)
end

local function open(name, text)
  write(work .. "/" .. name, text)
  run("vim.cmd('edit ' .. vim.fn.fnameescape(...))", work .. "/" .. name)
end

local tests = {}
local function test(name, run_test)
  table.insert(tests, { name = name, run = run_test })
end

test("the settings of later versions are Lua", function()
  assert(loadstring(snippet("Neovim 0.11 or later")))
end)

test("findings appear and go as one types", function()
  open("broken ö.xml", read(sources .. "/examples/broken.xml"))
  expect_findings({ "31 VX046", "74 VX019", "8 VX052" })
  go_to("True<")
  type_keys("rt")
  expect_findings({ "31 VX046", "74 VX019" })
  go_to("msec200")
  act('Change to "msec:200-500"')
  expect_findings({ "74 VX019" })
  go_to("<WakeEvents")
  act('Rename to "WakeEvent"')
  expect_findings({})
  expect_line("<WakeEvent>RTC;USB</WakeEvent>")
end)

test("elements and words are completed", function()
  go_to("<ActiveTime>")
  type_keys("O<lt>Rand")
  complete("RandomPkgVoting")
  expect_line("<RandomPkgVoting></RandomPkgVoting>")
  go_to("RTC;USB")
  type_keys("f;lcwHW")
  complete("HWRTC")
  expect_line("<WakeEvent>RTC;HWRTC</WakeEvent>")
end)

test("an option and its text are explained", function()
  go_to("msec:200-500")
  type_keys("K")
  local text = wait_for("a hover", function()
    return run([[
      for _, window in ipairs(vim.api.nvim_list_wins()) do
        if vim.api.nvim_win_get_config(window).relative ~= '' then
          local buffer = vim.api.nvim_win_get_buf(window)
          return table.concat(vim.api.nvim_buf_get_lines(buffer, 0, -1, true), '\n')
        end
      end
      return ''
    ]])
  end, function(got) return got ~= "" end)
  expect_match("the hover", "200 ms to 500 ms", text)
  expect_match("the hover", "InStateTime", text)
end)

test("the outline lists elements, and sections fold", function()
  type_keys("gO")
  local function names()
    local items = run("return vim.list_extend(vim.fn.getqflist(), vim.fn.getloclist(0))")
    return vim.tbl_map(function(item) return item.text end, items)
  end
  local got = wait_for("an outline", names, function(items) return #items > 0 end)
  expect_match("the outline", "CSTATES", table.concat(got, " "))
  type_keys(":cclose<CR>:lclose<CR>")
  local folds = ask("textDocument/foldingRange")
  local lines = vim.split(buffer_text(), "\n")
  local folded = vim.tbl_map(function(fold) return vim.trim(lines[fold.startLine + 1]) end, folds)
  expect("a fold of AutoRunCfg", true, vim.tbl_contains(folded, "<AutoRunCfg>"))
end)

test("other XML and half-typed text do no harm", function()
  open("half.xml", "<VEXOR>\n  <GLOBALPM>\n    <CO")
  type_keys("GA")
  complete("CORE")
  expect_line("<CORE></CORE>")
  open("other.xml", "<project><CSTATES>True</CSTATES></project>\n")
  ask("textDocument/foldingRange")
  expect_findings({})
end)

-- The same story as in the session "edit.txt" of the command line, with its file and its outcome.
test("an older file is brought up to date, mended and set to run three tests", function()
  local session = read(sources .. "/tests/tools/sessions/edit.txt")
  open("older ö.xml", assert(session:match("\n@ old%.xml\n(.-)%$ ")))
  expect_findings({
    "12 VX038", "14 VX022", "15 VX019", "20 VX019", "34 VX008", "38 VX022", "4 VX018", "7 VX052",
    "8 VX022", "9 VX019",
  })
  for _, step in ipairs({
    { "& Sx_Legacy", 'Write as "&amp;"' },
    { "True<", 'Change to "true"' },
    { "<GSTATS>", 'Rename to "GSTATES"' },
    { "<MaxWorkload>", 'Rename to "MaxWorkloads"' },
    { "<CSTATE>", 'Rename to "CSTATES"' },
    { "Speciffic", 'Change to "Specific:0-3"' },
    { "msec80", 'Change to "msec:80"' },
    { "mesc", 'Change to "msec:200-500"' },
    { "C1,C6", 'Change to "C1;C6"' },
    { "<SleepStates", "Move" },
    { "<SETTING>", "Bring the file" },
    { "CSTATS_Core_Con", 'Change to "CSTATES_Core_Con"' },
  }) do
    go_to(step[1])
    act(step[2])
  end
  go_to("false</GSTATES>")
  type_keys("ct<lt>")
  complete("true")
  expect_line("<GSTATES>true</GSTATES>")
  go_to("Random &amp;")
  type_keys("ct<lt>")
  complete("Random")
  expect_line("<KNOBS>Random</KNOBS>")
  expect_findings({})
  type_keys(":write<CR>")
  local outcome = assert(session:match("\n%$ vexorcfg fix %- <old%.xml\n(.-)%[0%]"))
  local path = work .. "/older ö.xml"
  wait_for("the file of the session", function() return read(path) end,
    function(got) return got == outcome end)
  local report = vim.fn.system({ "vexorcfg", "check", "--strict", path })
  expect("the status of vexorcfg check --strict: " .. report, 0, vim.v.shell_error)
end)

local function main()
  start_editor()
  run(snippet("Neovim 0.7 to 0.10"))
  for _, each in ipairs(tests) do
    local is_good, fault = pcall(each.run)
    if not is_good then
      io.stderr:write(each.name .. ":\n" .. tostring(fault) .. "\n")
      io.stderr:write("messages of the editor:\n" .. run("return vim.fn.execute('messages')") .. "\n")
      vim.cmd("cquit 1")
    end
  end
  vim.fn.jobstop(editor)
  vim.cmd("qall!")
end

local is_good, fault = pcall(main)
if not is_good then
  io.stderr:write(tostring(fault) .. "\n")
  vim.cmd("cquit 1")
end
