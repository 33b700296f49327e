#pragma once
// View items: the schema that an edition adds to an account set (two columns of code, GL_ViewItem, GL_XmZcDetail), and
// the values that the closing year has in it.

namespace gljz {

// Makes the schema in the new year's database, over a connection of its own. The first failure ends it without a word.
// In a database that has the columns the first statement fails, so that nothing is dropped there.
void ViewItemSchema();

// ViewItemSchema, then the values of the closing year's accounts and its view items. Every failing statement is passed
// over; no failure reaches the caller. GL_XmZcDetail is made empty and gets no rows.
void JzViewItem();

}  // namespace gljz
