#include <text/Value.h>

#include <Zel/ValueBuilder>

#include <cstring>
#include <ostream>

namespace Zel {

namespace {

/// The name without its scopes.
std::string_view bareName(std::string_view qualified) {
  const std::size_t scope = qualified.rfind("::");
  return scope == std::string_view::npos ? qualified : qualified.substr(scope + 2);
}

void appendEnumerator(TextBuffer& out, const EnumTable& table, const void* value) {
  int number = 0;
  std::memcpy(&number, value, sizeof number);
  out.append('\'');
  if (const Enumerator* const row = table.row(number)) {
    out.append(row->name);
  } else {
    out.append(enumString(table, number).view());
  }
  out.append('\'');
}

void readEnumerator(TextReader& in, const EnumTable& table, void* to) {
  std::string scratch;
  const int number = enumInstance(table, in.quoted(scratch));
  std::memcpy(to, &number, sizeof number);
}

void appendFrameHead(TextBuffer& out, const TypeTable& table) {
  out.append("Value('");
  out.append(table.name);
  out.append("', ** {");
}

void appendStored(TextBuffer& out, const TypeTable& table, const void* value) {
  bool isFirst = true;
  for (const AttrRow& row : table.rows) {
    if (!isStored(row)) {
      continue;
    }
    if (isFirst) {
      appendFrameHead(out, table);
      out.append('\'');
    } else {
      out.append(", '");
    }
    isFirst = false;
    out.append(row.name);
    out.append("': ");
    ValueSlot field(*row.value, [&](void* at) { row.read(value, at); });
    appendValue(out, *row.value, field.at());
  }
  if (!isFirst) {
    out.append("})");
  }
}

/// The attribute of a name that may stand in a text.
const AttrRow& attributeOf(const TypeTable& table, std::string_view name) {
  for (const AttrRow& row : table.rows) {
    if (row.name == name && (isStored(row) || row.kind == AttrKind::computedMember)) {
      return row;
    }
  }
  throwRangeException(String8(bareName(table.name)) + " has no such attribute: " + String8(name));
}

void readFrameHead(TextReader& in, const TypeTable& table) {
  TextBuffer printed;
  appendFrameHead(printed, table);
  if (in.skip(printed.view())) { // as it is printed, which is how it mostly comes
    return;
  }
  in.need(" Value");
  in.need(" (");
  TextBuffer name;
  name.append(" '");
  name.append(table.name);
  name.append('\'');
  in.need(name.view());
  in.need(" ,");
  in.need(" **");
  in.need(" {");
}

void readStored(TextReader& in, const ValueRecord& record, const TypeTable& table, void* to) {
  readFrameHead(in, table);
  ValueBuilder builder(record, table, to);
  for (bool isFirst = true;; isFirst = false) {
    in.skipSpace();
    if (in.atEnd()) {
      throwRangeException("premature end of value type " + String8(bareName(table.name)));
    }
    if (in.peek() == '}') {
      break;
    }
    if (!isFirst) {
      in.need(", ");
    }
    std::string scratch;
    const std::string_view name = in.quoted(scratch);
    in.need(" : ");
    const AttrRow& row = attributeOf(table, name);
    try {
      builder.take(row, [&](void* at) { readFreshValue(in, *row.value, at); });
    } catch (const RangeException& failure) {
      rethrowFromDeserializeAttr(failure, String8(name));
    }
  }
  in.need("} ");
  in.need(") ");
  builder.finish();
}

} // namespace

void appendValue(TextBuffer& out, const ValueRecord& record, const void* value) {
  if (record.enumeration != nullptr) {
    appendEnumerator(out, *record.enumeration, value);
  } else if (record.table != nullptr) {
    appendStored(out, record.table(), value);
  } else {
    record.print(value, out);
  }
}

void readFreshValue(TextReader& in, const ValueRecord& record, void* to) {
  if (record.enumeration != nullptr) {
    readEnumerator(in, *record.enumeration, to);
  } else if (record.table != nullptr) {
    readStored(in, record, record.table(), to);
  } else {
    record.parse(to, in);
  }
}

void readValue(TextReader& in, const ValueRecord& record, void* to) {
  ValueSlot fresh(record);
  readFreshValue(in, record, fresh.at());
  record.assign(to, fresh.at());
}

void readWhole(const String8& text, const ValueRecord& record, void* fresh) {
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, static_cast<int>(text.length()));
  {
    TextReader in(first, last);
    readFreshValue(in, record, fresh);
  }
  if (!(first == last)) {
    throwJunk(first, text);
  }
}

String8 textOf(const ValueRecord& record, const void* value) {
  TextBuffer out;
  appendValue(out, record, value);
  return out.text();
}

std::ostream& printText(std::ostream& out, const ValueRecord& record, const void* value) {
  TextBuffer text;
  appendValue(text, record, value);
  const std::string_view bytes = text.view();
  return out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace Zel
