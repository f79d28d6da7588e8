// Moving the view to what a facade photograph shows, and to points other
// programs or the operator name.
#pragma once

// Moves the view by translation alone so that the map point stands at its centre.
void Markez(double XX, double YY, double ZZ);

// Looks from 30 units behind the photograph's camera towards its target.
bool ShowFacadeOnModel();

// The point of the photo tool's exchange file "Handover.xyz" in the inbox folder, if written today.
void FromTessmap1Click();

// Asks for X Y, finds the model's height there, marks it red and centres the view on it.
void MarkALocationClick();
