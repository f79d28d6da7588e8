// "Define Customer": the customer's name for the reports, kept in the
// model's folder as "Customer.TXT".
#pragma once

// Asks with the engine's keys held; on OK writes the file and keeps the name
// in the session.
void DefineCustomer1Click();
