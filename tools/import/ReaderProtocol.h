#pragma once

// The stream the Access reader process writes on its standard output and the import reads.
// Plain C++ (no Qt), shared by both sides. Integers are little-endian.
//
//   table:  'T' text(name) u32(rows the table's definition counts) u32(columns)
//           then per column: text(name) u8(Access type code) u32(size in bytes)
//   row:    'R' then per column one value: a tag below and its payload
//   end of a table: 'E' u32(rows read)
//   failure: 'X' text(message); the reader then ends with a non-zero exit code
//   end of the file: 'Z'
// text() and bytes() are u32(length) and that many bytes; text is UTF-8.
namespace ReaderProtocol {

constexpr char tableTag = 'T';
constexpr char rowTag = 'R';
constexpr char endOfTableTag = 'E';
constexpr char failureTag = 'X';
constexpr char endOfFileTag = 'Z';

// Value tags.
constexpr char nullValue = 'N';
constexpr char integerValue = 'I'; // i64
constexpr char realValue = 'F';    // f64, the stored value (a Single as its shortest decimal)
constexpr char moneyValue = 'M';   // i64 ten-thousandths, exact
constexpr char dateValue = 'D';    // f64 as stored: days since 1899-12-30, time in the fraction
constexpr char textValue = 'S';    // text()
constexpr char bytesValue = 'B';   // bytes()

// The Access column types (the codes the file stores).
enum AccessType : unsigned char {
    Boolean = 0x01,
    Byte = 0x02,
    Integer = 0x03,
    LongInteger = 0x04,
    Currency = 0x05,
    Single = 0x06,
    Double = 0x07,
    DateTime = 0x08,
    Binary = 0x09,
    Text = 0x0a,
    OleObject = 0x0b,
    Memo = 0x0c,
    ReplicationId = 0x0f,
    Numeric = 0x10,
};

} // namespace ReaderProtocol
