#include "tools/qlproto/sql/RowOutput.h"

#include "Inspect/Json.h"
#include "Inspect/SafeText.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto::sql {

namespace {

class Rows : public RowSink {
  public:
    explicit Rows(Capture::Output& output) : _output(output) {}

    void lines(std::string_view text) override {
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = std::min(text.find('\n', begin), text.size());
            _output.append(visible(text.substr(begin, end - begin)) + '\n');
            begin = end + 1;
        }
    }
    void end() override { _output.flush(); }

  protected:
    Capture::Output& _output;
};

class TableRows : public Rows {
  public:
    using Rows::Rows;

    void begin(const std::vector<ColumnOfResult>& columns) override {
        _aligns.clear();
        _header.clear();
        for (const ColumnOfResult& it : columns) {
            _aligns.push_back(it.isNumber ? Table::Align::right : Table::Align::left);
            _header.emplace_back(it.name);
        }
        startPage();
    }
    void row(const std::vector<std::string_view>& cells) override {
        std::vector<Cell> row;
        for (const std::string_view it : cells)
            row.push_back(it.data() == nullptr ? Cell::none() : Cell(std::string(it)));
        _table->add(std::move(row));
        if (++_rows == PAGE) {
            end();
            startPage();
        }
    }
    void end() override {
        if (_rows != 0 || _isFirst) _output.append(_table->text());
        _isFirst = _rows == 0;
        Rows::end();
    }

  private:
    static constexpr size_t PAGE = 1000;

    void startPage() {
        _table = std::make_unique<Table>(_aligns);
        _table->add(_header);
        _rows = 0;
    }

    std::vector<Table::Align> _aligns;
    std::vector<Cell> _header;
    std::unique_ptr<Table> _table;
    size_t _rows = 0;
    bool _isFirst = true;
};

class CsvRows : public Rows {
  public:
    using Rows::Rows;

    void begin(const std::vector<ColumnOfResult>& columns) override {
        std::vector<std::string_view> names;
        for (const ColumnOfResult& it : columns) names.push_back(it.name);
        row(names);
    }
    void row(const std::vector<std::string_view>& cells) override {
        _line.clear();
        for (size_t i = 0; i < cells.size(); ++i) {
            if (i != 0) _line += ',';
            _cell.clear();
            Inspect::append_visible(cells[i], _cell);
            appendCsv(_cell, _line);
        }
        _output.append(_line += '\n');
    }

  private:
    std::string _line, _cell;
};

class JsonRows : public Rows {
  public:
    using Rows::Rows;

    void begin(const std::vector<ColumnOfResult>& columns) override {
        _keys.clear();
        for (const ColumnOfResult& it : columns)
            _keys.push_back((_keys.empty() ? '{' : ',') + Inspect::json_text(it.name) + ':');
    }
    void row(const std::vector<std::string_view>& cells) override {
        _line.clear();
        for (size_t i = 0; i < cells.size(); ++i)
            _line.append(_keys[i]).append(cells[i].data() == nullptr ? "null" : cells[i]);
        _output.append(_line += "}\n");
    }

  private:
    std::vector<std::string> _keys;
    std::string _line;
};

} // namespace

std::unique_ptr<RowSink> makeRowSink(RowForm form, Capture::Output& output) {
    if (form == RowForm::table) return std::make_unique<TableRows>(output);
    if (form == RowForm::csv) return std::make_unique<CsvRows>(output);
    return std::make_unique<JsonRows>(output);
}

} // namespace qlproto::sql
