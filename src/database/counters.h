#pragma once
// The change counters every client polls (StatusCounterTable).

// Reads the five counters into glng...Counter and acts on a rise of the group,
// status type and security counters.
void subGetCounterValues();
// Adds one to Counter after a change by this client.
void subUpdateStatusCounter();
