/* Square matrix products, plain and transposed: see what a change of loop order does. */
#define SIZE 16

void multiply(float product[SIZE][SIZE], float a[SIZE][SIZE], float b[SIZE][SIZE])
{
    for (int row = 0; row < SIZE; row++) {
        for (int column = 0; column < SIZE; column++) {
            float sum = 0.0f;
            for (int k = 0; k < SIZE; k++)
                sum += a[row][k] * b[k][column];
            product[row][column] = sum;
        }
    }
}

static void transpose(float to[SIZE][SIZE], float from[SIZE][SIZE])
{
    for (int row = 0; row < SIZE; row++)
        for (int column = 0; column < SIZE; column++)
            to[column][row] = from[row][column];
}

void multiply_transposed(float product[SIZE][SIZE], float a[SIZE][SIZE], float b[SIZE][SIZE])
{
    float columns[SIZE][SIZE];

    transpose(columns, b); /* inlined from -O2 on */
    for (int row = 0; row < SIZE; row++) {
        for (int column = 0; column < SIZE; column++) {
            float sum = 0.0f;
            for (int k = 0; k < SIZE; k++)
                sum += a[row][k] * columns[column][k];
            product[row][column] = sum;
        }
    }
}
