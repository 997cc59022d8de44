-- Neovim opens a program that calls another with too few parameters, sees that, goes where it is defined, and renames.

local account = os.getenv('NIB_WORK') .. '/DEMO'
local faults = 0

local function expect(truth, what)
  if not truth then
    faults = faults + 1
    io.write('FAILED: ', what, '\n')
  end
end

local function eventually(what, condition)
  expect(vim.wait(20000, condition, 20), what)
end

local function line_of(words)
  return vim.fn.search('\\V' .. words, 'cw')
end

local function main()
  local program = account .. '/BP/INVOICE'
  local lines = vim.fn.readfile(program)
  for i, line in ipairs(lines) do lines[i] = line:gsub('%(PROD.ID, QTY', '(PROD.ID') end
  vim.fn.writefile(lines, program)
  vim.cmd('edit ' .. program)
  local client = vim.lsp.start_client({name = 'nib', cmd = {os.getenv('NIB_LSP')}, root_dir = account})
  expect(vim.lsp.buf_attach_client(0, client), 'the server takes the buffer')

  local invoice = vim.api.nvim_get_current_buf()
  local call = line_of('CALL PRICE.CALC')
  eventually('a finding at the call', function()
    for _, told in ipairs(vim.diagnostic.get(invoice)) do
      if told.lnum == call - 1 and told.code == 'argument-count' then return true end
    end
    return false
  end)
  for _, told in ipairs(vim.diagnostic.get(invoice)) do
    io.write(('line %d: %s [%s]\n'):format(told.lnum + 1, told.message, told.code))
    expect(told.lnum == call - 1, 'no finding elsewhere')
  end
  vim.fn.cursor(1, 1)
  vim.diagnostic.goto_next({float = false})
  expect(vim.fn.line('.') == call, 'the way to the finding')

  vim.fn.cursor(call, vim.fn.getline(call):find('PRICE'))
  vim.lsp.buf.definition()
  eventually('the definition of PRICE.CALC', function()
    return vim.fn.expand('%:t') == 'PRICE.CALC' and vim.fn.getline('.'):find('SUBROUTINE PRICE.CALC') ~= nil
  end)

  vim.api.nvim_set_current_buf(invoice)
  local before = table.concat(vim.api.nvim_buf_get_lines(invoice, 0, -1, true), '\n')
  vim.fn.cursor(line_of('GOSUB PRINT.HEAD'), vim.fn.getline('.'):find('PRINT.HEAD'))
  vim.lsp.buf.rename('PAGE.HEAD')
  local wanted = before:gsub('PRINT%.HEAD', 'PAGE.HEAD')
  eventually('the new name everywhere', function()
    return table.concat(vim.api.nvim_buf_get_lines(invoice, 0, -1, true), '\n') == wanted
  end)
  vim.lsp.stop_client(client)
  eventually('the end of the server', function() return vim.lsp.client_is_stopped(client) end)
end

local done, failure = xpcall(main, debug.traceback)
expect(done, failure)
if faults == 0 then io.write('passed neovim\n') end
vim.cmd(faults == 0 and 'qall!' or 'cquit 1')
