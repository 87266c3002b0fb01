// x (0 to 1) to a power from 1 to 2: exact at both ends of the range, within 0.03 between them.
float softPower(float x, float power) { return x * (1.0 + (power - 1.0) * (x - 1.0)); }
